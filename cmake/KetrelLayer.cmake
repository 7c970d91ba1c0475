# ketrel_layer(NAME DEPS ...): the library target of one source folder, made of every .cpp
# in it. A folder with no sources yet gives an interface target, so the layering holds.
function(ketrel_layer name)
    cmake_parse_arguments(L "" "" "DEPS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    if(sources)
        add_library(${name} ${sources})
        target_link_libraries(${name} PUBLIC ${L_DEPS})
        target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ${L_DEPS})
        target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    endif()
endfunction()

# ketrel_tests(LIBS ... LABELS ...): one test executable per *_test.cpp in the folder.
function(ketrel_tests)
    cmake_parse_arguments(T "" "" "LIBS;LABELS" ${ARGN})
    file(GLOB tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*_test.cpp)
    foreach(src ${tests})
        get_filename_component(base ${src} NAME_WE)
        get_filename_component(dir ${CMAKE_CURRENT_SOURCE_DIR} NAME)
        set(target ${dir}_${base})
        add_executable(${target} ${src})
        target_link_libraries(${target} PRIVATE ${T_LIBS} ketrel_test_support GTest::gtest
                              GTest::gtest_main)
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60
            PROPERTIES LABELS "${T_LABELS}" ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    endforeach()
endfunction()
