# Lays the package out in BINARY_DIR/release/NAME, adds the hashes of its files and packs it beside itself.
set(folder ${BINARY_DIR}/release/${NAME})
file(REMOVE_RECURSE ${BINARY_DIR}/release)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${folder} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE files RELATIVE ${folder} ${folder}/*)
foreach(file IN LISTS files)
    file(SHA256 ${folder}/${file} hash)
    file(APPEND ${folder}/SHA256SUMS "${hash}  ${file}\n")
endforeach()

# CMake's zips also tell when a file was read and laid out. Info-ZIP's can do without, and with one date for every file
# equal files make equal packages.
find_program(zip zip)
if(zip AND UNIX)
    execute_process(COMMAND touch -d 2000-01-01T00:00:00Z SHA256SUMS ${files} WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
    set(pack ${CMAKE_COMMAND} -E env TZ=UTC ${zip} -qX ${folder}.zip)
else()
    set(pack ${CMAKE_COMMAND} -E tar cf ${folder}.zip --format=zip)
endif()
execute_process(COMMAND ${pack} SHA256SUMS ${files} WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY)
