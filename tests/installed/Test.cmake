# Installs what has been built into a folder, moves that away, as a package may be, and builds on it: each header alone,
# and the sample host, which then sends the sample firm's clients.
#   cmake -D BUILT= -D SAMPLE= -D HEADERS= -D GENERATOR= -D COMPILER= -P Test.cmake

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(output "${output}" PARENT_SCOPE)
  if(NOT status EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\nended with ${status}:\n${output}")
  endif()
endfunction()

set(temporary $ENV{TMPDIR})
if(NOT temporary)
  set(temporary /tmp)
endif()
string(RANDOM LENGTH 8 name)
set(folder ${temporary}/twqb-installed-${name})
# Removed at the end; a failure leaves it to be looked at.
file(MAKE_DIRECTORY ${folder}/firm)

run(${CMAKE_COMMAND} --install ${BUILT} --prefix ${folder}/first)
file(RENAME ${folder}/first ${folder}/installed)

function(build source to)
  run(${CMAKE_COMMAND} -S ${source} -B ${to} -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${COMPILER}
    -D CMAKE_PREFIX_PATH=${folder}/installed ${ARGN})
  run(${CMAKE_COMMAND} --build ${to})
endfunction()
build(${HEADERS} ${folder}/headers -D ROOT=${folder}/installed/include/TWQBClient90)
build(${SAMPLE} ${folder}/host)

run(${folder}/installed/bin/twqb -C ${folder}/firm init --sample)
run(${CMAKE_COMMAND} -E chdir ${folder}/firm ${folder}/host/sample_host)
if(NOT output MATCHES "The clients are in QuickBooks")
  message(FATAL_ERROR "The host says:\n${output}")
endif()
run(${folder}/installed/bin/twqb -C ${folder}/firm status)
if(NOT output MATCHES "clients +64 +64")
  message(FATAL_ERROR "What the host sent is not linked:\n${output}")
endif()
file(REMOVE_RECURSE ${folder})
