# Debian packages of what is installed: `cpack -G DEB` in a build of the preset `package`.
set(debian ${CMAKE_CURRENT_LIST_DIR}/debian)
set(made ${PROJECT_BINARY_DIR}/debian)
file(MAKE_DIRECTORY ${made})
set(revision 1)

set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Lumivex authors <lumivex@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tool python)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The program finds the library that is about to be packaged, not one that the machine has.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(same "(= ${PROJECT_VERSION}-${revision})")

# What `control` says of a component, and the documents that Debian wants in every package. The first line of the description is the synopsis.
function(describe component name section depends description)
  string(TOUPPER ${component} id)
  set(CPACK_DEBIAN_${id}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${id}_DESCRIPTION "${description}" PARENT_SCOPE)
  set(CPACK_COMPONENT_${id}_DESCRIPTION "${description}" PARENT_SCOPE)
  set(documents ${CMAKE_INSTALL_DATADIR}/doc/${name})
  install(FILES ${debian}/copyright ${made}/changelog.Debian.gz DESTINATION ${documents} COMPONENT ${component})
  if(EXISTS ${debian}/${name}.overrides)
    install(FILES ${debian}/${name}.overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${name}
            COMPONENT ${component})
  endif()
endfunction()

describe(runtime liblumivex1 libs ""
"image operations on the host's own pixel memory
Plain C functions that image editors load and call: tone and colour, blurs
and sharpening, masks, retouching, brushes, seam carving, tracing. They keep
no state and give the same bytes on every processor.")
describe(development liblumivex-dev libdevel "liblumivex1 ${same}"
"image operations on the host's own pixel memory (development)
The headers, which are also the manual, and what CMake and pkg-config need
to find the library.")
describe(tool lumivex graphics "liblumivex1 ${same}"
"image operations on picture files
One operation of the Lumivex library at a time on a PNG or JPEG picture, with
a selection if wanted; resizing by seams; strokes of a brush; tracing into
SVG; a page that shows all operations before and after.")
describe(python python3-lumivex python "liblumivex1 (>= ${PROJECT_VERSION}), python3 (>= 3.9), python3-numpy"
"image operations on numpy arrays
The functions of the Lumivex library under their English names, with checked
arguments, and whole jobs such as resizing by seams and tracing.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian}/triggers)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pil, python3-dask, python3-distributed")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${debian}/postinst ${debian}/prerm)

# Debian wants these compressed, without a date inside.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
execute_process(COMMAND_ERROR_IS_FATAL ANY
  COMMAND ${Python3_EXECUTABLE} ${debian}/changelog.py ${PROJECT_SOURCE_DIR} ${PROJECT_VERSION}-${revision}
          ${CPACK_PACKAGE_CONTACT} ${made}/changelog.Debian.gz)
install(CODE "execute_process(COMMAND_ERROR_IS_FATAL ANY COMMAND gzip -9nf
  \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man1/lumivex.1)" COMPONENT tool)

include(CPack)
