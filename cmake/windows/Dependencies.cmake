# The libraries that this one stands on, in a build for Windows: compiled here, from the folder that
# cmake/windows/sources.sh has filled (TWQB_WINDOWS_SOURCES). The targets have the names that their packages give them.

set(TWQB_WINDOWS_SOURCES ${PROJECT_SOURCE_DIR}/build/windows-sources CACHE PATH "What cmake/windows/sources.sh has filled")
if(NOT EXISTS ${TWQB_WINDOWS_SOURCES}/complete)
  message(FATAL_ERROR "No sources for Windows in ${TWQB_WINDOWS_SOURCES}: cmake/windows/sources.sh brings them.")
endif()
enable_language(C)

function(twqb_windows_library name target include)
  add_library(${name} STATIC EXCLUDE_FROM_ALL ${ARGN})
  add_library(${target} ALIAS ${name})
  target_include_directories(${name} SYSTEM PUBLIC ${include})
  target_compile_features(${name} PUBLIC cxx_std_20)
endfunction()

set(from ${TWQB_WINDOWS_SOURCES})
twqb_windows_library(twqb_fmt fmt::fmt ${from}/fmt/include ${from}/fmt/src/format.cc)
twqb_windows_library(twqb_pugixml pugixml::pugixml ${from}/pugixml/src ${from}/pugixml/src/pugixml.cpp)
twqb_windows_library(twqb_sqlite3 SQLite::SQLite3 ${from}/sqlite ${from}/sqlite/sqlite3.c)
target_compile_definitions(twqb_sqlite3 PRIVATE SQLITE_ENABLE_COLUMN_METADATA SQLITE_OMIT_LOAD_EXTENSION)
foreach(name CLI11::CLI11 nlohmann_json::nlohmann_json)
  string(REGEX REPLACE "::.*" "" plain ${name})
  add_library(twqb_${plain} INTERFACE)
  add_library(${name} ALIAS twqb_${plain})
  target_include_directories(twqb_${plain} SYSTEM INTERFACE ${from}/include)
endforeach()
