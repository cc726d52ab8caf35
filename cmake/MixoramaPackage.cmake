# Installing and the Debian package: `cmake --build build --target package` (docs/packaging.md).
# The programs find the installed layout themselves: bin/ beside share/mixorama (the resources,
# platform::programLayout) and libexec/mixorama (the Access reader, readerProgramPath).
set(MIXORAMA_APP_ID org.example.mixorama)
set(MIXORAMA_RELEASE_DATE 2026-11-26)
string(SUBSTRING ${MIXORAMA_RELEASE_DATE} 0 4 MIXORAMA_RELEASE_YEAR)
set(MIXORAMA_RELEASE_DATE_RFC2822 "Thu, 26 Nov 2026 12:00:00 +0000")
set(MIXORAMA_MAINTAINER "The Mixorama developers <packages@mixorama.example.org>")
# No license has been chosen yet; the metainfo and the copyright file both name this one.
set(MIXORAMA_LICENSE LicenseRef-proprietary)
set(MIXORAMA_LICENSE_TEXT "No license has been granted yet: all rights reserved.")

set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(made ${CMAKE_BINARY_DIR}/packaging)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# The manual pages: the hand-written parts around each program's own --help text.
set(manual_pages)
foreach(program mixorama mixorama-cli)
    add_custom_command(
        OUTPUT ${made}/${program}.1 ${made}/${program}.1.gz
        COMMAND ${Python3_EXECUTABLE} ${packaging}/helptext.py page $<TARGET_FILE:${program}>
                ${packaging}/man/${program}.1.in ${PROJECT_VERSION} ${MIXORAMA_RELEASE_DATE}
                ${made}/${program}.1
        DEPENDS ${program} ${packaging}/helptext.py ${packaging}/man/${program}.1.in
        COMMENT "Writing the manual page of ${program}"
        VERBATIM)
    list(APPEND manual_pages ${made}/${program}.1.gz)
endforeach()
add_custom_target(manual_pages ALL DEPENDS ${manual_pages})

configure_file(${packaging}/${MIXORAMA_APP_ID}.metainfo.xml.in
               ${made}/${MIXORAMA_APP_ID}.metainfo.xml @ONLY)
configure_file(${packaging}/copyright.in ${made}/copyright @ONLY)
configure_file(${packaging}/changelog.in ${made}/changelog @ONLY)
add_custom_command(
    OUTPUT ${made}/changelog.gz
    COMMAND gzip -9nkf ${made}/changelog
    DEPENDS ${made}/changelog ${packaging}/changelog.in
    VERBATIM)
add_custom_target(package_changelog ALL DEPENDS ${made}/changelog.gz)

install(TARGETS mixorama mixorama-cli RUNTIME DESTINATION bin)
install(TARGETS mixorama-mdbread RUNTIME DESTINATION libexec/mixorama)
install(FILES ${MIXORAMA_PROGRAM_DIR}/template.mdb ${MIXORAMA_PROGRAM_DIR}/Intro-Image.bmp
        DESTINATION share/mixorama)
install(DIRECTORY ${MIXORAMA_PROGRAM_DIR}/help DESTINATION share/mixorama)
install(FILES ${packaging}/${MIXORAMA_APP_ID}.desktop DESTINATION share/applications)
install(FILES ${made}/${MIXORAMA_APP_ID}.metainfo.xml DESTINATION share/metainfo)
install(FILES ${packaging}/icons/${MIXORAMA_APP_ID}.png DESTINATION share/icons/hicolor/48x48/apps)
install(FILES ${packaging}/icons/${MIXORAMA_APP_ID}.svg
        DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${manual_pages} DESTINATION share/man/man1)
install(FILES ${packaging}/mixorama-cli.bash-completion DESTINATION
        share/bash-completion/completions RENAME mixorama-cli)
install(FILES ${made}/copyright ${made}/changelog.gz DESTINATION share/doc/mixorama)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mixorama)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${MIXORAMA_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "make and print compilations for MiniDisc, cassette and CD")
string(CONCAT CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Mixorama keeps the compilations you record (MiniDiscs, cassettes, audio CDs\n"
    "and other media) in a compilation database: their tracks, picked from an album\n"
    "database or from music folders, their running order, times and cover texts.\n"
    "It prints track lists, recording protocols and covers as PDF, writes playlists\n"
    "and CUE sheets, and mixorama-cli runs all of it from scripts.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://mixorama.example.org/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)

# The package's checks (tests/packaging): scripts with the tools scripts/install-deps.sh installs.
set(checks ${CMAKE_SOURCE_DIR}/tests/packaging)
add_test(NAME PackageCompletion
         COMMAND ${checks}/completion_test.sh ${CMAKE_SOURCE_DIR} ${MIXORAMA_PROGRAM_DIR})
add_test(NAME PackageManualPages
         COMMAND ${checks}/manual_pages_test.sh ${CMAKE_SOURCE_DIR} ${MIXORAMA_PROGRAM_DIR} ${made})
add_test(NAME PackageDesktopFiles
         COMMAND ${checks}/desktop_files_test.sh ${CMAKE_SOURCE_DIR} ${made} ${PROJECT_VERSION})
add_test(NAME PackageDeb COMMAND ${checks}/package_test.sh ${CMAKE_BINARY_DIR})
set_tests_properties(PackageDeb PROPERTIES TIMEOUT 300)
