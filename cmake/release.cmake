# Lays the package out in BINARY_DIR/release/NAME, adds the hashes of its files and packs it beside itself.
set(folder ${BINARY_DIR}/release/${NAME})
file(REMOVE_RECURSE ${BINARY_DIR}/release)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${folder} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE files RELATIVE ${folder} ${folder}/*)
foreach(file IN LISTS files)
    file(SHA256 ${folder}/${file} hash)
    file(APPEND ${folder}/SHA256SUMS "${hash}  ${file}\n")
endforeach()

execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${folder}.zip --format=zip SHA256SUMS ${files}
                WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
