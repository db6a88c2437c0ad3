# Installed package: `find_package(Kiv)` gives Kiv::KivGeo ... Kiv::KivCore.
include(CMakePackageConfigHelpers)
set(kiv_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Kiv)
install(EXPORT KivTargets NAMESPACE Kiv:: DESTINATION ${kiv_cmake_dir} COMPONENT Development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/KivConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KivConfig.cmake INSTALL_DESTINATION ${kiv_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KivConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KivConfig.cmake ${PROJECT_BINARY_DIR}/KivConfigVersion.cmake
    DESTINATION ${kiv_cmake_dir} COMPONENT Development)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/io DESTINATION ${KIV_PLUGINS_INSTALL_DIRECTORY}
    PATTERN .gitkeep EXCLUDE)
file(GLOB samples CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Samples/*.mar)
install(FILES ${samples} DESTINATION ${CMAKE_INSTALL_DATADIR}/kiv/samples)
