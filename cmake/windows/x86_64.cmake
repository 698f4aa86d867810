# For Windows on 64 bits.
set(TWQB_WINDOWS_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
