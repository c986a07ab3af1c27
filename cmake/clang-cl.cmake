# clang-cl in place of the compiler of the Microsoft C++ ABI, with the headers of MinGW-w64 and
# libc++. Libraries are linked for their export tables alone: of that compiler's run-time library
# there is nothing here. HEADERS_OF, TARGET and PROCESSOR_MACRO come from the form's own file.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER clang-cl-19)
set(CMAKE_CXX_COMPILER_TARGET ${TARGET})
set(CMAKE_LINKER lld-link-19)
set(CMAKE_AR llvm-lib-19)
set(CMAKE_NM llvm-nm-19)
set(CMAKE_MT llvm-mt-19)
set(CMAKE_RC_COMPILER llvm-rc-19)
set(CMAKE_RC_FLAGS_INIT "-I/usr/${HEADERS_OF}/include")
set(CMAKE_OBJDUMP ${HEADERS_OF}-objdump)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(LLVM /usr/lib/llvm-19)
string(JOIN " " CMAKE_CXX_FLAGS_INIT
    ${PROCESSOR_MACRO} -D_UCRT -D_LIBCPP_NO_VCRUNTIME /clang:-fgnuc-version=12.2 /X
    /clang:-nobuiltininc -imsvc ${LLVM}/include/c++/v1 -imsvc ${LLVM}/lib/clang/19/include
    -imsvc /usr/${HEADERS_OF}/include /FI${CMAKE_CURRENT_LIST_DIR}/libcxx-on-mingw.h)
set(CMAKE_SHARED_LINKER_FLAGS_INIT "/NOENTRY /NODEFAULTLIB /FORCE:UNRESOLVED /SAFESEH:NO")
set(CMAKE_MODULE_LINKER_FLAGS_INIT ${CMAKE_SHARED_LINKER_FLAGS_INIT})
set(CMAKE_CXX_STANDARD_LIBRARIES
    "/usr/${HEADERS_OF}/lib/libkernel32.a /usr/${HEADERS_OF}/lib/libucrt.a" CACHE STRING "")
