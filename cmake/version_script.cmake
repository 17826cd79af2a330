# The linker's version script of a library, made of the list of its names in abi/: a node for each release that brought
# some. A program that needs what a later release brought does not start with the library of an earlier one, instead of
# failing in the middle.

# kcnvrt_version_script(NAME OUTPUT): writes OUTPUT. In the list "@NODE VERSION" stands above the names of that node.
function(kcnvrt_version_script name output)
    set(list ${PROJECT_SOURCE_DIR}/abi/lib${name}.symbols)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
    file(STRINGS ${list} lines REGEX "^[^#]")
    foreach(variable script node after end)
        set(${variable} "")
    endforeach()
    foreach(line ${lines})
        if(line MATCHES "^@([^ ]+) ([0-9.]+)$")
            set(node ${CMAKE_MATCH_1})
            kcnvrt_check_node(${name} ${node} ${CMAKE_MATCH_2})
            string(APPEND script "${end}${node} {\n    global:\n")
            set(end "}${after};\n")
            set(after " ${node}")
        elseif(node AND line MATCHES "^[a-zA-Z_0-9]+$")
            string(APPEND script "        ${line};\n")
        else()
            message(FATAL_ERROR "${list}: \"${line}\" is neither a node nor a name below one.")
        endif()
    endforeach()
    file(CONFIGURE OUTPUT ${output} @ONLY CONTENT "${script}    local:\n        *;\n${end}")
endfunction()

# Nodes of another major version would belong to another library: its SONAME is another one, too.
function(kcnvrt_check_node name node version)
    set(major ${PROJECT_VERSION_MAJOR})
    if(NOT node MATCHES "^${name}_${major}(\\.[0-9]+)?$" OR NOT version MATCHES "^${major}\\.")
        message(FATAL_ERROR "lib${name}.so.${major} cannot have the node \"@${node} ${version}\": in "
            "abi/lib${name}.symbols all names stand below \"@${name}_${major} ${major}.0.0\" when that version is new.")
    elseif(version VERSION_GREATER PROJECT_VERSION)
        message(FATAL_ERROR "Version ${PROJECT_VERSION} cannot have the node \"@${node} ${version}\" of "
            "abi/lib${name}.symbols: CMakeLists.txt says the version.")
    endif()
endfunction()
