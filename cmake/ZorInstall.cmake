# Install rules of the library, its headers and its CMake and pkg-config
# packages. The programs, the shipped data and the desktop files are
# installed by the lists of their own folders.
include(CMakePackageConfigHelpers)

set(ZOR_CMAKE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZOR_Commands)
set(ZOR_INCLUDE_INSTALL_DIR ${CMAKE_INSTALL_INCLUDEDIR}/ZOR_Commands)

install(TARGETS ZOR_Commands EXPORT ZOR_CommandsTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)

# Public headers keep their area folders, so that a host includes
# "store/cxmlworkdata.h" against the installed tree as it does in this one.
foreach(area module protocol commands telemetry store config log)
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/${area}/ DESTINATION ${ZOR_INCLUDE_INSTALL_DIR}/${area}
    COMPONENT development FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "*.inc")
endforeach()

install(EXPORT ZOR_CommandsTargets NAMESPACE ZOR_Commands:: DESTINATION ${ZOR_CMAKE_INSTALL_DIR}
  COMPONENT development)
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/ZOR_CommandsConfig.cmake.in
  ${CMAKE_BINARY_DIR}/ZOR_CommandsConfig.cmake INSTALL_DESTINATION ${ZOR_CMAKE_INSTALL_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/ZOR_CommandsConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/ZOR_CommandsConfig.cmake ${CMAKE_BINARY_DIR}/ZOR_CommandsConfigVersion.cmake
  DESTINATION ${ZOR_CMAKE_INSTALL_DIR} COMPONENT development)

# pkg-config: the prefix is taken from where the .pc file lies, so a moved
# tree still answers with its own folders.
file(RELATIVE_PATH ZOR_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" ZOR_PC_TO_PREFIX "${ZOR_PC_TO_PREFIX}")
configure_file(${CMAKE_SOURCE_DIR}/cmake/zor-commands.pc.in ${CMAKE_BINARY_DIR}/zor-commands.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zor-commands.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)
