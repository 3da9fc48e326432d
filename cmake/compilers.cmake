# What differs between compilers: the flags of our own code, and code that is built without exceptions and run-time types.
# Third-party sources are built without these flags.
add_library(tintwerk_flags INTERFACE)
target_include_directories(tintwerk_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(tintwerk_flags INTERFACE $<$<BOOL:${WIN32}>:UNICODE> $<$<BOOL:${WIN32}>:_UNICODE>)

if(MSVC)
    # Warnings are no errors: the two other compilers decide what is let through.
    # Exceptions are a choice of each target, not of every file.
    string(REGEX REPLACE "/EHsc|/GR" "" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
    set(no_exceptions /EHs-c- /GR-)
    target_compile_options(tintwerk_flags INTERFACE /W4 /utf-8 /permissive- /Zc:__cplusplus /Gy
                           $<$<NOT:$<BOOL:$<TARGET_PROPERTY:TINTWERK_NO_EXCEPTIONS>>>:/EHsc>)
    target_compile_definitions(tintwerk_flags INTERFACE _CRT_SECURE_NO_WARNINGS)
    # The manifests are resources of our own.
    target_link_options(tintwerk_flags INTERFACE /OPT:REF /MANIFEST:NO)
else()
    set(no_exceptions -fno-exceptions -fno-rtti)
    target_compile_options(tintwerk_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wvla -Werror -ffunction-sections -fdata-sections)
    # GCC 12 takes "text" + std::string(...) for an overlapping copy.
    target_compile_options(tintwerk_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-format-truncation>)
    target_link_options(tintwerk_flags INTERFACE -Wl,--gc-sections)
endif()

# tintwerk_product_code(<target>): the library ends up in the DLL, in other people's processes.
function(tintwerk_product_code target)
    set_target_properties(${target} PROPERTIES TINTWERK_NO_EXCEPTIONS ON)
    target_compile_options(${target} PRIVATE ${no_exceptions})
    if(MSVC) # which guards the stack by itself
        target_compile_options(${target} PRIVATE /Zi /guard:cf /Brepro)
    elseif(WIN32)
        target_compile_options(${target} PRIVATE -fstack-protector-strong -g -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.
                               -ffile-prefix-map=${CMAKE_BINARY_DIR}=build)
    endif()
endfunction()
