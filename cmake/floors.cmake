# One static library a floor. A floor is given the floors that it may call, so
# that a call upwards is an unresolved symbol and not a matter of discipline.

# What every target of the project is compiled with. The prefix map makes
# __FILE__ begin with "./", relative to src/: failures name their source file in
# documents that customers read, and no build path may leak into those.
# A compiler cache may hand the compiler paths that are relative to the build, so these are mapped too.
file(RELATIVE_PATH relative_source ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR}/src)
add_library(house INTERFACE)
target_compile_options(house INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/src/=./
  -fmacro-prefix-map=${relative_source}/=./
  -fdebug-prefix-map=${PROJECT_SOURCE_DIR}/=)
if(DEPLOYER_WERROR)
  target_compile_options(house INTERFACE -Werror)
endif()

# What every test is compiled with instead. Most of a test is the matchers of its framework, which
# take the compiler three times as long to optimise as the test runs.
add_library(test_house INTERFACE)
target_link_libraries(test_house INTERFACE house GTest::gmock)
target_compile_options(test_house INTERFACE -O0)
if(DEPLOYER_FUZZ)
  target_compile_options(test_house INTERFACE -fno-sanitize=fuzzer-no-link)
endif()

# add_precompiled(NAME HOUSE HEADER...) makes one precompiled header of those that most sources of
# that house include; targets take it with target_precompile_headers(... REUSE_FROM NAME). The
# presets that do without (CMAKE_DISABLE_PRECOMPILE_HEADERS) prove that files include what they use.
function(add_precompiled name house)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE ${house})
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()
add_precompiled(precompiled house <algorithm> <cstring> <functional> <list> <map> <memory> <string>
  <string_view> <vector> <boost/format.hpp> <boost/make_shared.hpp> <boost/shared_ptr.hpp>)

# add_floor(FOLDER LIB...) makes the library of src/FOLDER from its *.cpp files. It has the name of
# the folder itself, without those above it.
function(add_floor folder)
  get_filename_component(name ${folder} NAME)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE house)
  target_precompile_headers(${name} REUSE_FROM precompiled)
  if(DEPLOYER_TESTS)
    # The whole of the floor on top of those below it, and of nothing else.
    add_executable(floor_${name} ${PROJECT_SOURCE_DIR}/cmake/empty_main.cpp)
    target_link_libraries(floor_${name} PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,${name}>)
  endif()
endfunction()

# add_unit_tests(FLOOR [LIB]) makes the test program of tests/unit/FLOOR. LIB is the library that it
# tries where that has another name than the folder.
function(add_unit_tests floor)
  set(library ${floor})
  if(ARGC GREATER 1)
    set(library ${ARGV1})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${floor}/*.cpp)
  add_executable(unit_${floor} ${sources})
  target_include_directories(unit_${floor} PRIVATE ${PROJECT_SOURCE_DIR}/sandbox/driver)
  target_compile_definitions(unit_${floor} PRIVATE SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(unit_${floor} PRIVATE ${library} test_house GTest::gtest_main)
  target_precompile_headers(unit_${floor} REUSE_FROM precompiled_tests)
  gtest_discover_tests(unit_${floor} TEST_PREFIX ${floor}. DISCOVERY_TIMEOUT 60)
endfunction()
