# tintwerk_plugin_module(<target>): the DLL, linked so that equal objects give equal bytes wherever and whenever that is
# done, and its symbols beside it: PSTWUI.DLL.debug, or PSTWUI.pdb with MSVC.
function(tintwerk_plugin_module target)
    add_library(${target} SHARED ${CMAKE_SOURCE_DIR}/src/plugin/PSTWUI.def)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME PSTWUI PREFIX "" SUFFIX ".DLL" LINKER_LANGUAGE CXX)
    target_link_libraries(${target} PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,tintwerk_plugin>" tintwerk_plugin_resources)
    if(MSVC)
        target_link_options(${target} PRIVATE /DEBUG /PDBALTPATH:%_PDB% /OPT:ICF /Brepro /guard:cf /CETCOMPAT
                            /SUBSYSTEM:WINDOWS,6.01)
    else()
        # The first three are what MSVC does by itself. The base is a fixed one, since ld would make it from the file's path.
        target_link_options(${target} PRIVATE
            -Wl,--dynamicbase,--nxcompat,--high-entropy-va,--image-base,0x180000000,--no-insert-timestamp
            -Wl,--subsystem,windows:6.1,--major-os-version,6,--minor-os-version,1)
        set(module $<TARGET_FILE:${target}>) # -p: or objcopy would put the time into the file
        add_custom_command(TARGET ${target} POST_BUILD
            COMMAND ${CMAKE_OBJCOPY} -p --only-keep-debug ${module} ${module}.debug
            COMMAND ${CMAKE_OBJCOPY} -p --strip-all --add-gnu-debuglink=${module}.debug ${module}
            VERBATIM)
    endif()
endfunction()
