# `cmake --build FOLDER --target uninstall` removes what `cmake --install FOLDER` put in place, by its list of files,
# and the folders that are empty then and were the project's own. The list has them where they are: DESTDIR need not be
# said again, and where it was said nothing else is touched.

if(CMAKE_SCRIPT_MODE_FILE)
    if(NOT EXISTS "${list}")
        message(FATAL_ERROR "Nothing has been installed from this folder: there is no ${list}.")
    endif()
    file(STRINGS "${list}" files)
    foreach(file ${files})
        if(EXISTS "${file}" OR IS_SYMLINK "${file}")
            message(STATUS "Removing ${file}")
            file(REMOVE "${file}") # and says nothing where it may not
            if(EXISTS "${file}" OR IS_SYMLINK "${file}")
                message(FATAL_ERROR "This cannot be removed:\n  ${file}")
            endif()
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

install(CODE [[list(TRANSFORM CMAKE_INSTALL_MANIFEST_FILES PREPEND "$ENV{DESTDIR}")]])

add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -D list=${PROJECT_BINARY_DIR}/install_manifest.txt -P ${CMAKE_CURRENT_LIST_FILE}
    VERBATIM)
