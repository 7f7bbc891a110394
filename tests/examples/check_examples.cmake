# Builds the programs in SOURCE with the package installed below PREFIX and nothing else of this project, and runs each
# for a moment, in which it may say nothing.
cmake_minimum_required(VERSION 3.21)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(status "${status}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(must_succeed)
  run(${ARGN})
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}\nstatus ${status}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${BUILD})
must_succeed(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja -DCMAKE_PREFIX_PATH=${PREFIX}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror" ${CROSS})
must_succeed(${CMAKE_COMMAND} --build ${BUILD})

file(GLOB sources ${SOURCE}/*/main.cpp)
list(TRANSFORM sources REPLACE ".*/([a-z_]+)/main.cpp" "${BUILD}/example_\\1" OUTPUT_VARIABLE programs)

# The same with pkg-config, for those who do not use CMake. For another processor it would look for the installed files in
# the sysroot, as for Qt's.
if(NOT CROSS)
  set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIB_DIR}/pkgconfig)
  must_succeed(pkg-config --cflags --libs graph-bus)
  string(STRIP "${output}" flags)
  separate_arguments(flags)
  must_succeed(${CXX} -std=c++17 -fPIC ${SOURCE}/publisher/main.cpp -o ${BUILD}/publisher ${flags}
    -Wl,-rpath,${PREFIX}/${LIB_DIR})
  list(APPEND programs ${BUILD}/publisher)
endif()

# Whatever a program can call through the headers is in the libraries, of which a release shows the exported part only. What
# is declared without being exported is taken for hidden here, too, and functions that are inline are compiled as well.
if(NOT CROSS)
  set(include_dir ${PREFIX}/include/graph_charts)
  file(GLOB_RECURSE headers RELATIVE ${include_dir} ${include_dir}/*.h)
  set(foreign)
  set(own)
  foreach(header ${headers})
    file(STRINGS ${include_dir}/${header} exports REGEX "GRAPH_[A-Z]+_EXPORT")
    file(STRINGS ${include_dir}/${header} includes REGEX "^#include <")
    list(APPEND foreign ${includes})
    if(exports)
      list(APPEND own "#include <${header}>")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES foreign)
  list(JOIN foreign "\n" foreign)
  list(JOIN own "\n" own)
  file(WRITE ${BUILD}/headers.cpp "${foreign}\n#pragma GCC visibility push(hidden)\n${own}\n")
  must_succeed(pkg-config --cflags --libs graph-charts)
  string(STRIP "${output}" flags)
  separate_arguments(flags)
  # The headers of Qt 6 have an inline function of their own that does not link.
  if(NOT flags MATCHES "Qt6")
    must_succeed(${CXX} -std=c++17 -fPIC -shared -fkeep-inline-functions -Wl,--no-undefined ${BUILD}/headers.cpp
      -o ${BUILD}/headers.so ${flags})
  endif()
endif()

# How timeout ends a program that has not ended by itself.
set(stopped 124)
set(ENV{QML2_IMPORT_PATH} ${PREFIX}/${QML_DIR}${QT_QML_DIR})
foreach(program ${programs})
  # What the bus itself says does not count.
  run(dbus-run-session -- sh -c "timeout 2 ${program} >${BUILD}/output 2>&1")
  file(READ ${BUILD}/output output)
  # Of a machine where nobody is logged in.
  string(REGEX REPLACE "QStandardPaths: [^\n]*\n" "" output "${output}")
  if(NOT status EQUAL stopped OR NOT output STREQUAL "")
    message(FATAL_ERROR "${program}\nstatus ${status}\n${output}")
  endif()
endforeach()

# Documents that need no program: shown with the viewer, they say nothing either.
foreach(document audio/audio waterfall/waterfall)
  run(${PREFIX}/bin/graph-view ${SOURCE}/${document}.qml --shot ${BUILD}/picture.png --wait 1500)
  string(REGEX REPLACE "QStandardPaths: [^\n]*\n" "" output "${output}")
  if(NOT status EQUAL 0 OR NOT output STREQUAL "")
    message(FATAL_ERROR "${document}.qml\nstatus ${status}\n${output}")
  endif()
endforeach()
