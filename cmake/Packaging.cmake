# Installing and packaging. The programs go to bin/ and the supplied files to
# share/parvenna/, by the rules beside the targets that make them; here is
# what a desktop needs to offer the program (a menu entry, an icon, the
# project file type) and the Debian package around it all.
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
install(FILES ${packaging}/parvenna.desktop DESTINATION share/applications)
install(FILES ${packaging}/parvenna.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${packaging}/parvenna-mime.xml DESTINATION share/mime/packages RENAME parvenna.xml)
install(FILES ${packaging}/copyright DESTINATION share/doc/parvenna)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME parvenna)
set(CPACK_PACKAGE_VENDOR "The Parvenna team")
set(CPACK_PACKAGE_CONTACT "support@parvenna.example.org")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "closure checker for land surveyors and plan examiners")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "Parvenna walks the courses of a parcel's boundary, lines by bearing or\n"
    "azimuth and distance and curves by chord bearing, arc, radius and chord,\n"
    "and shows the misclosure, the precision ratio, the area and a sketch after\n"
    "every keystroke. Courses are keyed in or picked from a DWG, DXF or DGN\n"
    "drawing; parcels are kept in a project file and printed as closure reports.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Parvenna team <support@parvenna.example.org>")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://parvenna.example.org/")
# The libraries the programs link (Qt, GDAL, SQLite, the C++ run-time) are
# read from the binaries; what is loaded only at run time is named here: Qt's
# window-system plugins, and node for the DWG converter.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, nodejs")
# The project file type and the menu entry reach the desktop through these.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils")

include(CPack)
