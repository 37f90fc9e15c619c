# What each fuzz target links beside ZOR_Commands, for the libFuzzer build
# (fuzz/) and the corpus replay of the tests alike.
function(zor_fuzz_links target name)
  target_link_libraries(${target} PRIVATE ZOR_Commands)
  if(name MATCHES "^fuzz_tool")
    # zor-tool's subcommands: the tool's sources less its main.
    file(GLOB tool_parts ${CMAKE_SOURCE_DIR}/tools/zor_tool_*.cpp)
    target_sources(${target} PRIVATE ${tool_parts})
    target_link_libraries(${target} PRIVATE zor_terminal zor_drive)
    target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tools)
  elseif(name STREQUAL "fuzz_replyassembler" OR name STREQUAL "fuzz_simrequest")
    target_link_libraries(${target} PRIVATE zor_terminal)
  elseif(name STREQUAL "fuzz_archivemodel")
    target_link_libraries(${target} PRIVATE zor_host_telemetry)
  endif()
endfunction()
