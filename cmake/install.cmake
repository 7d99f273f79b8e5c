# What `cmake --install` copies. Nothing in it knows the prefix: the whole may be moved afterwards.
include(CMakePackageConfigHelpers)

set(LUMIVEX_ZSH_DIR ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING "Where zsh looks for completions")
set(LUMIVEX_PYTHON_DIR "" CACHE STRING "Where the Python package goes, without the library; empty for nowhere")

if(WIN32)
  # Made beside the library rather than with it, so that a target's rule would not find it.
  set(import_library liblumivex.dll.a)
  set(library_file ${CMAKE_INSTALL_BINDIR}/lumivex.dll)
  install(PROGRAMS $<TARGET_FILE:lumivex> DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(FILES ${PROJECT_BINARY_DIR}/src/${import_library} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
else()
  set(library_file ${CMAKE_INSTALL_LIBDIR}/liblumivex.so.1)
  install(TARGETS lumivex LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
endif()

# Headers that are derived stand in the build.
foreach(headers ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/src/generated/include)
  install(DIRECTORY ${headers}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
          FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
endforeach()

set(package ${PROJECT_BINARY_DIR}/package)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/lumivex)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/lumivex-config.cmake.in ${package}/lumivex-config.cmake
  INSTALL_DESTINATION ${config_dir} PATH_VARS library_file CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(${package}/lumivex-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${package}/lumivex-config.cmake ${package}/lumivex-config-version.cmake DESTINATION ${config_dir}
        COMPONENT development)

file(RELATIVE_PATH prefix_from_pkgconfig ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig ${prefix_from_pkgconfig})
configure_file(${CMAKE_CURRENT_LIST_DIR}/lumivex.pc.in ${package}/lumivex.pc @ONLY)
install(FILES ${package}/lumivex.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(LUMIVEX_TOOLS)
  install(TARGETS lumivex_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  if(NOT CMAKE_CROSSCOMPILING)
    set(about ${PROJECT_BINARY_DIR}/tools/about)
    install(FILES ${about}/lumivex.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    install(FILES ${about}/lumivex.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
            RENAME lumivex COMPONENT tool)
    install(FILES ${about}/lumivex.zsh DESTINATION ${LUMIVEX_ZSH_DIR} RENAME _lumivex COMPONENT tool)
    install(FILES ${about}/lumivex.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
  endif()
endif()

if(LUMIVEX_PYTHON_DIR)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(staged ${PROJECT_BINARY_DIR}/python)
  set(stage ${PROJECT_SOURCE_DIR}/bindings/python/packaging/stage.py)
  add_custom_target(lumivex_python ALL COMMAND Python3::Interpreter -B ${stage} ${staged} VERBATIM)
  install(DIRECTORY ${staged}/lumivex DESTINATION ${LUMIVEX_PYTHON_DIR} COMPONENT python)
endif()
