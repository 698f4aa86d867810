# For Windows on 32 bits.
set(TWQB_WINDOWS_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
