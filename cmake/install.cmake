# The installed tree: libraries, headers, wavtool, a CMake package and pkg-config files; on Windows import libraries for
# MinGW (.dll.a) and MSVC (.lib).
include(CMakePackageConfigHelpers)

set(PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/orpsp)

if(NOT WIN32)
  set_target_properties(orpsp PROPERTIES INSTALL_RPATH "$ORIGIN")  # orpcore stands beside it
endif()

install(TARGETS orpcore orpsp EXPORT orpsp-targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS wavtool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT orpsp-targets NAMESPACE orpsp:: DESTINATION ${PACKAGE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/orpsp-config.cmake.in ${PROJECT_BINARY_DIR}/orpsp-config.cmake
  INSTALL_DESTINATION ${PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orpsp-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orpsp-config.cmake ${PROJECT_BINARY_DIR}/orpsp-config-version.cmake
  DESTINATION ${PACKAGE_DIR})

# pkg-config files find the tree from where they stand, so it may be moved.
file(RELATIVE_PATH PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
foreach(library orpcore orpsp)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# Import libraries for MSVC, from the list of exports that the linker writes with each DLL.
if(MINGW)
  find_program(LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
  foreach(library orpcore orpsp)
    set(list ${PROJECT_BINARY_DIR}/lib/${library}.def)
    set(import ${PROJECT_BINARY_DIR}/lib/${library}.lib)
    target_link_options(${library} PRIVATE -Wl,--output-def,${list})
    add_custom_command(OUTPUT ${import}
      COMMAND ${LLVM_DLLTOOL} -m i386:x86-64 -d ${list} -D $<TARGET_FILE_NAME:${library}> -l ${import}
      DEPENDS ${library})
    add_custom_target(${library}_msvc_import ALL DEPENDS ${import})
    install(FILES ${import} DESTINATION ${CMAKE_INSTALL_LIBDIR})
  endforeach()
endif()
