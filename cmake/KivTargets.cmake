# Usage requirements that every target of ours shares, and the shape of a platform library.

add_library(kiv_warnings INTERFACE)
target_compile_options(kiv_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Werror)

# __FILE__ reads ../../Source/... wherever the tree is built: failures name their throw site so.
add_library(kiv_options INTERFACE)
target_compile_options(kiv_options INTERFACE -fmacro-prefix-map=${PROJECT_SOURCE_DIR}=../..)
target_compile_definitions(kiv_options INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_DEPRECATED_WARNINGS)
if(KIV_SANITIZE)
    target_compile_options(kiv_options INTERFACE
        -fsanitize=${KIV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kiv_options INTERFACE -fsanitize=${KIV_SANITIZE})
endif()

# A sanitized program that is to be tested does not report the leaks of Qt.
function(kiv_leave_out_foreign_leaks program)
    if(KIV_SANITIZE)
        target_sources(${program} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/LeakSuppressions.cpp)
    endif()
endfunction()

# kiv_library(NAME SOURCES ... PUBLIC ... PRIVATE ...): a shared platform library Kiv::NAME whose
# public headers are Common/Include/NAME.
function(kiv_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;PUBLIC;PRIVATE")
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Common/Include/${name}/*.h)
    add_library(${name} SHARED ${arg_SOURCES} ${headers})
    add_library(Kiv::${name} ALIAS ${name})
    target_include_directories(${name}
        PUBLIC
            $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Common/Include>
            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/Kiv>
        PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_link_libraries(${name}
        PUBLIC ${arg_PUBLIC}
        PRIVATE ${arg_PRIVATE} $<BUILD_INTERFACE:kiv_warnings> $<BUILD_INTERFACE:kiv_options>)
    set_target_properties(${name} PROPERTIES
        AUTOMOC ON VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} EXPORT KivTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_COMPONENT Development)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/Common/Include/${name}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Kiv COMPONENT Development)
endfunction()
