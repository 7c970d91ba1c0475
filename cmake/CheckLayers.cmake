# Refuses an include that runs up the layers. Each source folder may include headers of the
# folders listed for it and of none other; `#include "layer/file.h"` names its layer. Run at
# configure time (include) and as a test (cmake -DKETREL_SRC=<src> -P CheckLayers.cmake), so a
# header added later is caught by the tests even when the configure step does not run again.

cmake_minimum_required(VERSION 3.25)

set(_layers_platform platform)
set(_layers_screens platform screens)
set(_layers_data data)
set(_layers_state platform screens state)
set(_layers_codes platform screens data state codes)
set(_layers_obd platform screens data state codes obd)
set(_layers_sim platform sim)
set(_layers_link platform screens data state codes obd link)
set(_layers_recording platform screens data state codes obd link recording)
set(_layers_sweeps platform screens data state codes obd link sweeps)
set(_layers_display platform screens data state codes obd link display)
set(_layers_core platform screens data state codes obd link recording sweeps display core)
set(_layers_qt platform screens data state codes obd sim link recording sweeps display core qt)
set(_layers_app platform screens data state codes obd link recording sweeps display core qt app)
set(_layers_tools platform screens data state codes obd link recording sweeps display core qt sim
    tools)

function(ketrel_check_layers src)
    set(problems "")
    foreach(layer platform screens data state codes obd sim link recording sweeps display core qt app
                  tools)
        file(GLOB_RECURSE files ${src}/${layer}/*.h ${src}/${layer}/*.cpp)
        foreach(f ${files})
            file(STRINGS ${f} includes REGEX "^[ \t]*#[ \t]*include[ \t]+\"[A-Za-z0-9_-]+/")
            foreach(line ${includes})
                string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]+\"([A-Za-z0-9_-]+)/.*" "\\1"
                       target "${line}")
                if(NOT target IN_LIST _layers_${layer})
                    file(RELATIVE_PATH rel ${src} ${f})
                    list(APPEND problems "${rel}: ${layer}/ may not include ${target}/")
                endif()
            endforeach()
        endforeach()
    endforeach()
    if(problems)
        list(JOIN problems "\n  " text)
        message(FATAL_ERROR "Includes that run up the layers:\n  ${text}")
    endif()
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
    ketrel_check_layers(${KETREL_SRC})
    message(STATUS "Every include runs down the layers")
endif()
