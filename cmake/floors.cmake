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

# add_floor(FOLDER LIB...) makes the library of src/FOLDER from its *.cpp files. It has the name of
# the folder itself, without those above it.
function(add_floor folder)
  get_filename_component(name ${folder} NAME)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE house)
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
  target_link_libraries(unit_${floor} PRIVATE ${library} house GTest::gmock GTest::gtest_main)
  gtest_discover_tests(unit_${floor} TEST_PREFIX ${floor}. DISCOVERY_TIMEOUT 60)
endfunction()
