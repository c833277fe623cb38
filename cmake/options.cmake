# What every target of the project is compiled with.
add_library(orpsp_options INTERFACE)
target_compile_options(orpsp_options INTERFACE -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${ORPSP_WERROR}>:-Werror>)
target_include_directories(orpsp_options INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
if(MINGW)
  # MinGW's gcc does not align 32- and 64-byte stack slots.
  target_compile_options(orpsp_options INTERFACE -Wa,-muse-unaligned-vector-move)
  target_link_options(orpsp_options INTERFACE -static)  # nothing but KERNEL32 and the C runtime at run time
endif()

# Highway, headers only. The Windows build must see these headers and nothing else of the system's include folder.
find_path(HWY_INCLUDE_DIR hwy/highway.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/highway)
file(CREATE_LINK ${HWY_INCLUDE_DIR}/hwy ${PROJECT_BINARY_DIR}/highway/hwy SYMBOLIC)
add_library(orpsp_highway INTERFACE)
target_include_directories(orpsp_highway SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/highway)
target_compile_definitions(orpsp_highway INTERFACE HWY_IS_DEBUG_BUILD=0)  # its assertions need its library
