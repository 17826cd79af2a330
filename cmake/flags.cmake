# Flags that every target of the project shares, and how its two libraries are linked.

set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(kcnvrt_flags INTERFACE)
target_compile_options(kcnvrt_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(KCNVRT_WERROR)
    target_compile_options(kcnvrt_flags INTERFACE -Werror)
endif()
if(KCNVRT_SANITIZE)
    add_compile_options(-fsanitize=${KCNVRT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KCNVRT_SANITIZE})
endif()
# With -pthread gcc counts atomically. Told to do so by -fprofile-update=atomic it would, too, but the compiler's cache
# knows nothing of that option, and would keep no object.
if(KCNVRT_COVERAGE)
    add_compile_options(--coverage -fprofile-abs-path -pthread)
    add_link_options(--coverage)
endif()

# The libraries are C++ inside and C outside: no exceptions, no RTTI, nothing run at load time.
add_library(kcnvrt_library_flags INTERFACE)
target_compile_options(kcnvrt_library_flags INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics -fvisibility-inlines-hidden>
    -fvisibility=hidden -fno-asynchronous-unwind-tables -fno-unwind-tables -ffunction-sections -fdata-sections)
target_link_libraries(kcnvrt_library_flags INTERFACE kcnvrt_flags)

# Objects of a static library are compiled for both ways of linking: with -flto or without.
if(KCNVRT_STATIC AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(kcnvrt_library_flags INTERFACE -flto=auto -ffat-lto-objects)
    add_link_options(-Werror=odr -Werror=lto-type-mismatch)
endif()

# kcnvrt_library(NAME): the library made of the objects of NAME_objects, for programs that find it as k_cnvrt::NAME.
function(kcnvrt_library name)
    if(KCNVRT_STATIC)
        add_library(${name} STATIC)
    else()
        add_library(${name} SHARED)
        kcnvrt_link_shared(${name})
    endif()
    add_library(k_cnvrt::${name} ALIAS ${name})
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:${name}_objects>)
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/version_script.cmake)

# Exports exactly the names listed in abi/lib<NAME>.symbols, under a SONAME with the major version. The C driver links
# it, so that the link itself fails on the first symbol of the C++ library; a sanitizer or coverage build needs the C++
# driver.
function(kcnvrt_link_shared name)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${name}.map)
    kcnvrt_version_script(${name} ${script})
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINK_DEPENDS ${script})
    target_link_options(${name} PRIVATE -Wl,--version-script=${script} -Wl,--as-needed)
    if(NOT KCNVRT_SANITIZE AND NOT KCNVRT_COVERAGE)
        set_target_properties(${name} PROPERTIES LINKER_LANGUAGE C)
        target_link_options(${name} PRIVATE
            -Wl,--gc-sections -Wl,-z,defs -Wl,-z,noseparate-code -Wl,-Bsymbolic-functions)
    endif()
endfunction()

# A library linked by the C driver must not be given the C++ run-time libraries.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
