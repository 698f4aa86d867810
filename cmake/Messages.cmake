# Tables of messages, made at build time out of *.messages files (docs/messages.md).

add_subdirectory(${PROJECT_SOURCE_DIR}/tools/messagegen)

# Adds the table to a target: std::span<const Message> twqb::messages::<function>(). A file for each text and one for the
# function; those that come out as they were are not written, so that a change compiles no more than it touches.
function(twqb_message_table target function)
  cmake_parse_arguments(ARG "" "" "FILES" ${ARGN})
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/messages/${function})
  set(made ${folder}/${function}.cpp)
  foreach(file ${ARG_FILES})
    cmake_path(GET file STEM name)
    list(APPEND made ${folder}/${name}.rows.cpp)
  endforeach()
  add_custom_command(OUTPUT ${made}
    COMMAND twqb_messagegen ${function} ${folder} ${ARG_FILES}
    # By its file, too: one that comes from another build is imported, and a change of it would not be seen.
    DEPENDS twqb_messagegen $<TARGET_FILE:twqb_messagegen> ${ARG_FILES}
    COMMENT "Messages for ${target}" VERBATIM)
  target_sources(${target} PRIVATE ${made})
endfunction()
