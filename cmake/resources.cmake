# Dialogs, bitmaps, manifest and version are the same .rc files for both targets: one resource compiler makes the
# .res file, which is linked into Windows modules and embedded as bytes (tintwerk_resources_begin/_end) on Linux.

if(NOT MSVC) # which brings a resource compiler of its own
    find_program(TINTWERK_WINDRES x86_64-w64-mingw32-windres REQUIRED)
endif()

# tintwerk_resources(<target> <main .rc file>): an object library that carries the compiled resources.
function(tintwerk_resources target rc)
    get_filename_component(directory ${rc} DIRECTORY)
    file(GLOB inputs CONFIGURE_DEPENDS ${directory}/*.rc ${directory}/*.h ${directory}/*.bmp ${directory}/*.manifest
         ${directory}/bitmaps/*.bmp ${directory}/dialogs/*.rc ${directory}/dialogs/*.h)
    set(res ${CMAKE_CURRENT_BINARY_DIR}/${target}.res)
    if(MSVC)
        set(compile ${CMAKE_RC_COMPILER} /nologo /c65001 /I ${CMAKE_SOURCE_DIR} /I ${directory} /fo ${res} ${rc})
    else()
        set(compile ${TINTWERK_WINDRES} -c 65001 -I ${CMAKE_SOURCE_DIR} -I ${directory} -J rc -O res -o ${res} ${rc})
    endif()
    add_custom_command(OUTPUT ${res} COMMAND ${compile} DEPENDS ${rc} ${inputs} COMMENT "Compiling resources ${rc}" VERBATIM)
    if(MSVC)
        set(object ${res}) # its linker takes them as they are
        set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
    elseif(WIN32)
        set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.o)
        add_custom_command(
            OUTPUT ${object}
            COMMAND ${TINTWERK_WINDRES} -J res -O coff -o ${object} ${res}
            DEPENDS ${res}
            VERBATIM)
        set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
    else()
        set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.S)
        file(GENERATE OUTPUT ${object} CONTENT
"    .section .rodata
    .balign 16
    .global tintwerk_resources_begin
    .global tintwerk_resources_end
tintwerk_resources_begin:
    .incbin \"${res}\"
tintwerk_resources_end:
    .section .note.GNU-stack,\"\",@progbits
")
        # Assembled here and not by those who link it: this property reaches only the targets of this folder.
        set_source_files_properties(${object} PROPERTIES OBJECT_DEPENDS ${res} LANGUAGE ASM GENERATED ON)
        add_library(${target} OBJECT ${object} ${res})
        return()
    endif()
    add_library(${target} INTERFACE)
    target_sources(${target} INTERFACE ${object})
    add_custom_target(${target}_build DEPENDS ${res})
    add_dependencies(${target} ${target}_build)
endfunction()
