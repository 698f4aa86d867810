# A layer is a folder with one static library. Its headers are reached by the folder's name ("engine/Reader.h",
# "adapters/sqlite/SqliteProvider.h") through a tree of links of its own, so that a file can include just what its target
# links: an include in the wrong direction does not compile.

# The headers of others that most of the library reads, compiled once for all of it. None of this project's own: a change
# of one would compile everything again. A file includes what it uses all the same; the preset "asan" and ./run lint
# compile without.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/Headers.cpp CONTENT "")
add_library(twqb_headers OBJECT ${PROJECT_BINARY_DIR}/Headers.cpp)
target_link_libraries(twqb_headers PRIVATE twqb_options fmt::fmt pugixml::pugixml)
target_compile_features(twqb_headers PRIVATE cxx_std_20)
target_precompile_headers(twqb_headers PRIVATE <fmt/core.h> <pugixml.hpp> <algorithm> <array> <cstddef> <cstdint>
  <functional> <map> <memory> <optional> <span> <sstream> <stdexcept> <string> <string_view> <utility> <variant> <vector>)

# For a static library that is compiled as the library is.
function(twqb_precompiled target)
  target_precompile_headers(${target} REUSE_FROM twqb_headers)
endfunction()

# What a layer asks of the system stands in files of their own; in a build for Windows those of the same name in
# adapters/windows/<layer> take their place.
function(twqb_layer name)
  cmake_parse_arguments(ARG "" "SOURCE" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${ARG_SOURCE}/*.cpp)
  if(WIN32)
    file(GLOB windows CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/adapters/windows/${name}/*.cpp)
    foreach(file ${windows})
      cmake_path(GET file FILENAME plain)
      list(REMOVE_ITEM sources ${PROJECT_SOURCE_DIR}/${ARG_SOURCE}/${plain})
    endforeach()
    list(APPEND sources ${windows})
  endif()
  if(NOT sources)
    return()
  endif()
  string(REGEX REPLACE "^src/" "" prefix ${ARG_SOURCE})
  set(tree ${PROJECT_BINARY_DIR}/include/${name})
  cmake_path(GET prefix PARENT_PATH above)
  file(MAKE_DIRECTORY ${tree}/${above})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${ARG_SOURCE} ${tree}/${prefix} COPY_ON_ERROR SYMBOLIC)

  add_library(twqb_${name} STATIC ${sources})
  add_library(twqb::${name} ALIAS twqb_${name})
  target_include_directories(twqb_${name} PUBLIC $<BUILD_INTERFACE:${tree}>)
  target_compile_features(twqb_${name} PUBLIC cxx_std_20)
  target_link_libraries(twqb_${name} PRIVATE $<BUILD_INTERFACE:twqb_options> PUBLIC ${ARG_LINK})
  twqb_precompiled(twqb_${name})
  set_property(GLOBAL APPEND PROPERTY TWQB_LAYERS twqb_${name})
endfunction()

# Public headers that a layer implements, reached as "twqb/CTWQBBridge.h".
function(twqb_public_headers name folder)
  if(TARGET twqb_${name})
    cmake_path(GET folder PARENT_PATH root)
    target_include_directories(twqb_${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${root}>)
  endif()
endfunction()

# Tests make and remove thousands of small files, each write of which waits for the disk. Files in memory do as well: what
# a killed process wrote is in the system's cache.
set(TWQB_TEST_ENVIRONMENT)
if(IS_DIRECTORY /dev/shm)
  list(APPEND TWQB_TEST_ENVIRONMENT "TMPDIR=/dev/shm")
endif()

# One test program for a folder under tests/; its tests are labelled with the folder's name. MATCHERS: its files use those
# of gmock. COST: about how many seconds one of its tests takes, of a program whose tests have to begin ahead of the short
# ones, so that all cores end together; ctest knows the others by what they took the last time.
function(twqb_tests folder)
  cmake_parse_arguments(ARG "MATCHERS" "COST" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "House\\.cpp$")  # libraries, for they serve more than one program
  if(NOT sources)
    return()
  endif()
  foreach(target ${ARG_LINK})
    if(target MATCHES "^twqb::" AND NOT TARGET ${target})
      return()
    endif()
  endforeach()
  add_executable(test_${folder} ${sources})
  target_link_libraries(test_${folder} PRIVATE twqb_testoptions ${ARG_LINK} GTest::gtest_main)
  if(ARG_MATCHERS)
    target_precompile_headers(test_${folder} REUSE_FROM twqb_matcherheaders)
  else()
    target_precompile_headers(test_${folder} REUSE_FROM twqb_testheaders)
  endif()
  set_target_properties(test_${folder} PROPERTIES POSITION_INDEPENDENT_CODE OFF
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  set(cost)
  if(ARG_COST)
    set(cost COST ${ARG_COST})
  endif()
  gtest_discover_tests(test_${folder} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES PROPERTIES TIMEOUT 300
    LABELS ${folder} ${cost} ENVIRONMENT "${TWQB_TEST_ENVIRONMENT}")
endfunction()
