# What a desktop needs to know of kivhost, and the Debian package.

set(kiv_desktop_dir ${PROJECT_SOURCE_DIR}/Desktop)
install(FILES ${kiv_desktop_dir}/kivhost.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${kiv_desktop_dir}/kivhost-mime.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME kivhost.xml)
set(kiv_icons_dir ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${kiv_desktop_dir}/kivhost.svg DESTINATION ${kiv_icons_dir}/scalable/apps)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES ${kiv_desktop_dir}/icons/${size}.png
        DESTINATION ${kiv_icons_dir}/${size}x${size}/apps RENAME kivhost.png)
endforeach()
install(FILES ${kiv_desktop_dir}/kivhost.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kivhost)
install(FILES ${kiv_desktop_dir}/kivhost.zsh
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions RENAME _kivhost)

# Pages are packed as the manual of Debian asks for it; without a time stamp, so that the same page
# gives the same bytes.
find_program(GZIP_EXECUTABLE gzip REQUIRED)
set(kiv_man_page ${PROJECT_BINARY_DIR}/kivhost.1.gz)
add_custom_command(OUTPUT ${kiv_man_page}
    COMMAND ${GZIP_EXECUTABLE} -9nc ${kiv_desktop_dir}/kivhost.1 > ${kiv_man_page}
    DEPENDS ${kiv_desktop_dir}/kivhost.1
    VERBATIM)
add_custom_target(KivManPage ALL DEPENDS ${kiv_man_page})
install(FILES ${kiv_man_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_PACKAGE_NAME kivhost)
set(CPACK_PACKAGE_CONTACT "The KivPlotOut developers <developers@kivplotout.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "look into garment markers and export them")
set(CPACK_PACKAGE_DESCRIPTION
    "A marker is the layout of garment pieces on fabric by which the fabric is cut.
kivhost shows markers and exports them for cutters, for nesting programs and
as reports, in a window or from the command line.")
set(CPACK_GENERATOR TGZ)
set(CPACK_STRIP_FILES ON)

# The package is for users: headers and what else a developer needs stay out of it.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENTS_ALL ${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME})
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qttranslations5-l10n) # the standard buttons of dialogs
include(CPack)
