# Lets clang play MSVC's compiler, with MSVC's command line and its reading of C++, over the headers of MinGW-w64, since
# Microsoft's are not here. What it compiles cannot run; it shows what of the sources and of these CMake files MSVC would
# stumble over. Used by tools/check-msvc only.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
find_program(clang_cl NAMES clang-cl clang-cl-14 PATHS /usr/lib/llvm-14/bin REQUIRED)
set(CMAKE_C_COMPILER ${clang_cl})
set(CMAKE_CXX_COMPILER ${clang_cl})
set(CMAKE_AR llvm-lib)
set(CMAKE_LINKER lld-link)
set(CMAKE_MT llvm-mt)
set(CMAKE_RC_COMPILER llvm-rc)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# The rules are MSVC's; the macros by which the headers know their compiler stay MinGW's.
file(GLOB libstdcxx /usr/lib/gcc/x86_64-w64-mingw32/*-posix/include/c++)
set(CMAKE_C_FLAGS_INIT "-D_MSC_VER=1933 --target=x86_64-w64-mingw32 /clang:-fms-compatibility-version=19.33 -Wno-unused-command-line-argument")
set(CMAKE_CXX_FLAGS_INIT "${CMAKE_C_FLAGS_INIT}")
add_compile_options(
    -U_MSC_VER -D__STRICT_ANSI__=1
    "$<$<COMPILE_LANGUAGE:CXX>:/clang:-nostdinc++;/clang:-isystem${libstdcxx};/clang:-isystem${libstdcxx}/x86_64-w64-mingw32>"
    "$<$<COMPILE_LANGUAGE:CXX>:/clang:-std=c++20;-Wpedantic;-Wgnu;-Wmicrosoft;-Wshadow;-Werror>")

# Wine's headers declare newer records than MinGW's, as Microsoft's do. What they lack comes from MinGW's.
if(TINTWERK_NEWER_HEADERS)
    set(bridge ${CMAKE_BINARY_DIR}/newer_headers.h)
    file(WRITE ${bridge} "#include <_mingw.h>\n#undef __CRT_UUID_DECL\n"
         "#define WINBOOL BOOL\n#define WINE_UNICODE_NATIVE\n#define _TIMEVAL_DEFINED\n"
         "#define GR_GDIOBJECTS 0\n#define GR_USEROBJECTS 1\n")
    add_compile_options(/FI${bridge} /clang:-fgnuc-version=10.2.0 "/clang:-isystem/usr/include/wine/wine/windows")
else()
    add_compile_options(/clang:-fgnuc-version=12.2.0)
endif()
