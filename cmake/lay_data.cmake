# Copies the data files of SOURCE into TARGET, where the program looks for them. RECORD remembers
# what was laid (lines "hash path"), so that a later run can tell the user's files from ours:
#   - a file of ours that is as it was laid gets its source's new version;
#   - a file that the user changed, or made under the name of one of ours, is left alone;
#   - a file whose source is gone stays: a file that the user changed may need it;
#   - a file of ours that is missing is laid again.
cmake_minimum_required(VERSION 3.25)

foreach(parameter SOURCE TARGET RECORD)
    if(NOT ${parameter})
        message(FATAL_ERROR "${parameter} is not set")
    endif()
endforeach()

if(EXISTS "${RECORD}")
    file(STRINGS "${RECORD}" lines ENCODING UTF-8)
    foreach(line IN LISTS lines)
        if(line MATCHES "^([0-9a-f]+) (.+)$")
            string(SHA1 id "${CMAKE_MATCH_2}")
            set(laid_${id} ${CMAKE_MATCH_1})
        endif()
    endforeach()
endif()

file(GLOB_RECURSE paths RELATIVE "${SOURCE}" "${SOURCE}/*")
list(REMOVE_ITEM paths CMakeLists.txt)
if(NOT paths)
    message(FATAL_ERROR "no data files in ${SOURCE} (a path with [ or ] in it can't be searched)")
endif()
set(record "")
foreach(path IN LISTS paths)
    string(SHA1 id "${path}")
    file(SHA256 "${SOURCE}/${path}" wanted)
    set(here "")
    if(EXISTS "${TARGET}/${path}")
        file(SHA256 "${TARGET}/${path}" here)
    endif()
    if(here STREQUAL "" OR here STREQUAL "${laid_${id}}")
        if(NOT here STREQUAL wanted)
            get_filename_component(folder "${TARGET}/${path}" DIRECTORY)
            file(MAKE_DIRECTORY "${folder}")
            # Not file(COPY): it takes files of one time for the same.
            file(COPY_FILE "${SOURCE}/${path}" "${TARGET}/${path}")
        endif()
        string(APPEND record "${wanted} ${path}\n")
    elseif(here STREQUAL wanted)
        string(APPEND record "${wanted} ${path}\n")
    else()
        message(STATUS "kept, changed by the user: ${path}")
        if(laid_${id})
            string(APPEND record "${laid_${id}} ${path}\n")
        endif()
    endif()
endforeach()

file(WRITE "${RECORD}" "${record}")
