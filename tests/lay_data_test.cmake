# Lays data files several times over and checks that what the user did is never undone.
cmake_minimum_required(VERSION 3.25)

set(source "${WORK}/source")
set(target "${WORK}/bin")
file(REMOVE_RECURSE "${WORK}")

function(lay)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -D SOURCE=${source} -D TARGET=${target} -D RECORD=${WORK}/record.txt
            -P ${ROOT}/cmake/lay_data.cmake
        RESULT_VARIABLE status OUTPUT_QUIET)
    if(status)
        message(SEND_ERROR "lay_data.cmake failed: ${status}")
    endif()
endfunction()

function(expect path content)
    set(found "(missing)")
    if(EXISTS "${target}/${path}")
        file(READ "${target}/${path}" found)
    endif()
    if(NOT found STREQUAL content)
        message(SEND_ERROR "${path}: \"${found}\" instead of \"${content}\"")
    endif()
endfunction()

file(WRITE "${source}/ini/a.ini" "a1")
file(WRITE "${source}/mapas/Isla Ñ [1].map" "m1")
file(WRITE "${source}/mapas/vieja.map" "v1")
file(WRITE "${source}/mapas/otra.map" "o1")
file(WRITE "${target}/mapas/otra.map" "the user's own, there before us")
lay()
expect(ini/a.ini a1)
expect("mapas/Isla Ñ [1].map" m1)
expect(mapas/otra.map "the user's own, there before us")

# The user changes one file and adds another; the sources move on.
file(WRITE "${target}/ini/a.ini" "edited")
file(WRITE "${target}/mapas/mia.map" "mine")
file(WRITE "${source}/ini/a.ini" "a2")
file(WRITE "${source}/mapas/Isla Ñ [1].map" "m2")
file(REMOVE "${source}/mapas/vieja.map")
lay()
expect(ini/a.ini edited)
expect(mapas/mia.map mine)
expect(mapas/otra.map "the user's own, there before us")
expect("mapas/Isla Ñ [1].map" m2)
expect(mapas/vieja.map v1)

# Still so the next time, also when the record is lost; a file that is missing comes back.
lay()
file(REMOVE "${WORK}/record.txt" "${target}/mapas/Isla Ñ [1].map")
file(WRITE "${source}/ini/a.ini" "a3")
lay()
expect(ini/a.ini edited)
expect("mapas/Isla Ñ [1].map" m2)
