# Writes a source file with one function a text, each giving the bytes of a file:
#
#   cmake -D OUTPUT=Texts.cpp -P EmbedTexts.cmake -- Name=file Name=file ...
#
# Bytes and no string literals: compilers limit the length of those.

set(code "#include \"cli/workplace/SampleTexts.h\"\n\nnamespace twqb::cli {\n")
set(isText FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
  set(argument "${CMAKE_ARGV${i}}")
  if(isText)
    string(REGEX MATCH "^([A-Za-z]+)=(.+)$" parts "${argument}")
    set(name ${CMAKE_MATCH_1})
    file(READ "${CMAKE_MATCH_2}" bytes HEX)
    string(REGEX REPLACE "(................................................................)" "\\1\n" bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND code "\nnamespace {\nconstexpr unsigned char k${name}[] = {\n${bytes}};\n}  // namespace\n\n"
           "std::string_view ${name}() { return {reinterpret_cast<const char*>(k${name}), sizeof k${name}}; }\n")
  elseif(argument STREQUAL "--")
    set(isText TRUE)
  endif()
endforeach()
string(APPEND code "\n}  // namespace twqb::cli\n")
file(WRITE "${OUTPUT}" "${code}")
