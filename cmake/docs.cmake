# Target docs: pages from the headers, into <build folder>/docs.
find_program(DOXYGEN doxygen)
if(DOXYGEN)
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E env ORPSP_DOCS=${PROJECT_BINARY_DIR}/docs ${DOXYGEN} docs/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    VERBATIM)
endif()
