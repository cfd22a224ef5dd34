# Runs at the installation, as the prefix may be given as late as that. Makes the files that say where the program is: the
# desktop entry and the service of the session bus, in ENTRIES_FOLDER. Both start the very program they came with, be its
# folder in PATH or not.
cmake_path(ABSOLUTE_PATH VELMORAND_EXECUTABLE BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)

# A word of a command as both formats want it: in quotes unless it is harmless, and with the backslashes of the quotes
# escaped once more, as in every value.
function(quote_word result word)
    if(word MATCHES "[^A-Za-z0-9/._+@:,=%-]")
        string(REGEX REPLACE "([\"`$\\\\])" "\\\\\\1" word "${word}")
        string(REPLACE "\\" "\\\\" word "${word}")
        set(word "\"${word}\"")
    endif()
    set(${result} "${word}" PARENT_SCOPE)
endfunction()

quote_word(VELMORAND_SERVICE_COMMAND "${VELMORAND_EXECUTABLE}")
set(VELMORAND_ENTRY_COMMAND "${VELMORAND_SERVICE_COMMAND}")
if(VELMORAND_EXECUTABLE MATCHES "%")
    message(WARNING "A desktop entry cannot name a program in a folder with a percent sign: it starts the one in PATH.")
    set(VELMORAND_ENTRY_COMMAND velmorand)
endif()

foreach(file ${VELMORAND_IDENTIFIER}.desktop ${VELMORAND_IDENTIFIER}.service)
    cmake_path(GET file EXTENSION LAST_ONLY extension)
    configure_file("${TEMPLATES_FOLDER}/velmorand${extension}.in" "${ENTRIES_FOLDER}/${file}" @ONLY)
endforeach()
