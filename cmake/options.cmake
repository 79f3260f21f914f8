# What every target is compiled with.
add_library(kestrune_options INTERFACE)
target_compile_definitions(kestrune_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
    KESTRUNE_VERSION="${PROJECT_VERSION}")
if(MSVC)
    target_compile_options(kestrune_options INTERFACE /W4 /utf-8)
else()
    target_compile_options(kestrune_options INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wnon-virtual-dtor
        -Woverloaded-virtual -Wold-style-cast
        $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT MSVC)
    # What users run is hardened; what we run checks the library's preconditions.
    target_compile_definitions(kestrune_options INTERFACE
        $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>
        $<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
    target_compile_options(kestrune_options INTERFACE
        $<$<CONFIG:Release>:-fstack-protector-strong>)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        target_compile_options(kestrune_options INTERFACE
            $<$<CONFIG:Release>:-fstack-clash-protection>)
        target_link_options(kestrune_options INTERFACE
            $<$<CONFIG:Release>:LINKER:-z,relro,-z,now>)
    endif()
endif()
if(KESTRUNE_WERROR)
    if(MSVC)
        target_compile_options(kestrune_options INTERFACE /WX)
    else()
        target_compile_options(kestrune_options INTERFACE -Werror)
    endif()
endif()
if(KESTRUNE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# A library of this project: its sources, and what it links. Includes are rooted at src/.
function(kestrune_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE kestrune_options)
endfunction()
