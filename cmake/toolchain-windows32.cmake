# Compiles for 32-bit Windows with MinGW-w64. Nothing is named that could run the result here.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR X86)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
# The compiler's libraries go into each file, so that the system's DLLs are all that it needs.
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
