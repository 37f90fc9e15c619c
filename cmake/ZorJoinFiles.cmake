# cmake -DOUT=file -DFRAGMENTS="a;b" -P ZorJoinFiles.cmake
# Joins text fragments into one file, each fragment ending with a newline.
set(content "")
foreach(f ${FRAGMENTS})
  file(READ ${f} part)
  string(APPEND content "# --- ${f}\n${part}\n")
endforeach()
get_filename_component(dir ${OUT} DIRECTORY)
file(MAKE_DIRECTORY ${dir})
file(WRITE ${OUT}.tmp "${content}")
file(RENAME ${OUT}.tmp ${OUT})
