# Small helpers shared by the CMake lists of the project.

# zor_glob(VAR dir...) collects the sources (.cpp .h .ui .qrc) of the given
# folders, re-checked at every build so a new file needs no list edit.
function(zor_glob var)
  set(files)
  foreach(dir ${ARGN})
    file(GLOB found CONFIGURE_DEPENDS
      ${dir}/*.cpp ${dir}/*.h ${dir}/*.ui ${dir}/*.qrc)
    list(APPEND files ${found})
  endforeach()
  set(${var} ${files} PARENT_SCOPE)
endfunction()
