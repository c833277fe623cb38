# Installs into an empty folder, moves the tree, builds a program with the CMake package and another with pkg-config, and
# runs them. For Windows: the CMake package, and a look into the import library for MSVC.

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_output program)
  run(${EMULATOR} ${program})
  if(NOT output MATCHES "20000 \\+  20000 =  32767, mean  20000")
    message(FATAL_ERROR "${program} printed\n${output}")
  endif()
endfunction()

function(expect_files)
  foreach(file ${ARGN})
    if(NOT EXISTS ${TREE}/${file})
      message(FATAL_ERROR "${file} was not installed")
    endif()
  endforeach()
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
set(TREE ${WORK}/moved)
file(RENAME ${WORK}/first ${TREE})
expect_files(include/orpsp.h include/orpcore.h)

set(toolchain "")
if(TOOLCHAIN)
  set(toolchain --toolchain ${TOOLCHAIN} -DCMAKE_FIND_ROOT_PATH=${TREE})
endif()
run(${CMAKE_COMMAND} -S ${CONSUMER} -B ${WORK}/consumer -G ${GENERATOR} ${toolchain} -DCMAKE_C_COMPILER=${C_COMPILER}
  -DCMAKE_C_FLAGS=${C_FLAGS} -DCMAKE_PREFIX_PATH=${TREE} -DPROGRAM=${PROGRAM})
run(${CMAKE_COMMAND} --build ${WORK}/consumer)

if(TOOLCHAIN)
  expect_files(bin/orpsp.dll bin/orpcore.dll ${LIBDIR}/liborpsp.dll.a ${LIBDIR}/liborpcore.dll.a
    ${LIBDIR}/orpsp.lib ${LIBDIR}/orpcore.lib)
  file(COPY ${WORK}/consumer/with_package.exe DESTINATION ${TREE}/bin)  # programs find DLLs beside themselves
  expect_output(${TREE}/bin/with_package.exe)
  run(${EMULATOR} ${TREE}/bin/wavtool.exe info)

  # One object of an import library names one function of one DLL.
  find_program(NM NAMES llvm-nm llvm-nm-14 REQUIRED)
  foreach(library orpcore orpsp)
    run(${NM} --defined-only ${TREE}/${LIBDIR}/${library}.lib)
    string(REGEX MATCHALL "T (orps?|own)[A-Z0-9][A-Za-z0-9_]*" imports "${output}")
    file(STRINGS ${BUILD}/lib/${library}.def exports REGEX "@")
    list(LENGTH imports count)
    list(LENGTH exports expected)
    if(NOT count EQUAL expected OR count LESS 9)
      message(FATAL_ERROR "${library}.lib imports ${count} functions, the DLL exports ${expected}:\n${output}")
    endif()
  endforeach()
  return()
endif()

expect_files(${LIBDIR}/liborpsp.so ${LIBDIR}/liborpsp.so.7 ${LIBDIR}/liborpcore.so.7)
expect_output(${WORK}/consumer/with_package)
run(${TREE}/bin/wavtool info)
if(NOT output MATCHES "library +${TREE}")
  message(FATAL_ERROR "the installed wavtool does not use the installed library:\n${output}")
endif()

set(ENV{PKG_CONFIG_PATH} ${TREE}/${LIBDIR}/pkgconfig)
run(pkg-config --cflags --libs orpsp)
string(STRIP "${output}" flags)
separate_arguments(flags UNIX_COMMAND "${C_FLAGS} ${flags}")
run(${C_COMPILER} ${PROGRAM} -o ${WORK}/with_pkgconfig ${flags} -Wl,-rpath,${TREE}/${LIBDIR})
expect_output(${WORK}/with_pkgconfig)
run(readelf -d ${WORK}/with_pkgconfig)
if(NOT output MATCHES "liborpsp\\.so\\.7\\]")
  message(FATAL_ERROR "the program does not ask for liborpsp.so.7:\n${output}")
endif()
