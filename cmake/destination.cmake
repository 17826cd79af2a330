# Where `cmake --install` puts what follows: what is relative is meant from the folder in which it is started, and
# becomes whole, since the list of what is installed is read in another one.
install(CODE [[
    cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_PREFIX NORMALIZE)
    set(destination "$ENV{DESTDIR}")
    if(destination)
        cmake_path(ABSOLUTE_PATH destination NORMALIZE)
        set(ENV{DESTDIR} "${destination}")
    endif()]] ALL_COMPONENTS)

# What was built for another machine has no place among the files of this one.
if(CMAKE_CROSSCOMPILING)
    install(CODE [[
        if(NOT destination AND CMAKE_INSTALL_PREFIX MATCHES "^/(usr(/local)?/?)?$")
            message(FATAL_ERROR "This is built for another machine: DESTDIR=FOLDER says where its files go.")
        endif()]] ALL_COMPONENTS)
endif()
