# `cmake --build FOLDER --target uninstall` removes what `cmake --install FOLDER` put in place, by its list of files,
# and the folders that are empty then and were the project's own. DESTDIR counts as it did then.

if(CMAKE_SCRIPT_MODE_FILE)
    if(NOT EXISTS "${list}")
        message(FATAL_ERROR "Nothing has been installed from this folder: there is no ${list}.")
    endif()
    file(STRINGS "${list}" files)
    foreach(file ${files})
        set(file "$ENV{DESTDIR}${file}")
        if(EXISTS "${file}" OR IS_SYMLINK "${file}")
            message(STATUS "Removing ${file}")
            file(REMOVE "${file}")
        endif()
        cmake_path(GET file PARENT_PATH folder)
        list(APPEND folders ${folder})
    endforeach()
    list(FILTER folders INCLUDE REGEX "/k_?cnvrt(/fleet)?$")
    list(REMOVE_DUPLICATES folders)
    list(SORT folders ORDER DESCENDING) # what is inside comes first
    foreach(folder ${folders})
        file(GLOB left "${folder}/*")
        if(NOT left)
            file(REMOVE_RECURSE "${folder}")
        endif()
    endforeach()
    file(REMOVE "${list}")
    return()
endif()

add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -D list=${PROJECT_BINARY_DIR}/install_manifest.txt -P ${CMAKE_CURRENT_LIST_FILE}
    VERBATIM)
