# Installation and the Debian package.
#
#   cmake --install <build> --prefix /usr [DESTDIR=...]   the programs and their desktop files
#   cpack -G DEB  (run in <build>, or ./setup.sh package)    quorvane_<version>_<arch>.deb
#
# The desktop files live in desktop/: the desktop entry, the AppStream metainfo, the MIME
# types of .qva and .qvt, and the icons that desktop/icons/generate.py renders into the
# hicolor layout. Man pages are installed compressed, as Debian expects them.
include(GNUInstallDirs)

# Installing (and so CPack) takes what is built and builds nothing: a package needs only the
# programs, not the tests and benchmarks of `all`. Build the programs first (./setup.sh
# package does).
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(QUORVANE_APP_ID com.quorvane.Quorvane)
set(quorvane_desktop_dir ${CMAKE_SOURCE_DIR}/desktop)

install(TARGETS quorvane quorvane-eval quorvane-eval-schemas
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${quorvane_desktop_dir}/${QUORVANE_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${quorvane_desktop_dir}/${QUORVANE_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${quorvane_desktop_dir}/${QUORVANE_APP_ID}.mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
        RENAME ${QUORVANE_APP_ID}.xml)
install(DIRECTORY ${quorvane_desktop_dir}/icons/hicolor
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons
        FILES_MATCHING PATTERN "*.png" PATTERN "*.svg")

# gzip -n: no name and no time stamp in the header, so the package is reproducible.
find_program(QUORVANE_GZIP gzip REQUIRED)
set(quorvane_compressed_docs)
function(quorvane_compress source target)
    add_custom_command(OUTPUT ${target}
        COMMAND ${QUORVANE_GZIP} -9 -n -c ${source} > ${target}
        DEPENDS ${source}
        COMMENT "Compressing ${source}"
        VERBATIM)
    set(quorvane_compressed_docs ${quorvane_compressed_docs} ${target} PARENT_SCOPE)
endfunction()

set(quorvane_doc_build_dir ${CMAKE_BINARY_DIR}/install-docs)
file(MAKE_DIRECTORY ${quorvane_doc_build_dir})
foreach(page quorvane quorvane-eval quorvane-eval-schemas)
    quorvane_compress(${CMAKE_SOURCE_DIR}/docs/${page}.1 ${quorvane_doc_build_dir}/${page}.1.gz)
    install(FILES ${quorvane_doc_build_dir}/${page}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
quorvane_compress(${quorvane_desktop_dir}/debian/changelog ${quorvane_doc_build_dir}/changelog.gz)
add_custom_target(quorvane_install_docs ALL DEPENDS ${quorvane_compressed_docs})

set(quorvane_package_doc_dir ${CMAKE_INSTALL_DATADIR}/doc/quorvane)
install(FILES ${quorvane_desktop_dir}/debian/copyright ${quorvane_doc_build_dir}/changelog.gz
        DESTINATION ${quorvane_package_doc_dir})

# --- The Debian package ------------------------------------------------------------------
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvane)
set(CPACK_PACKAGE_VENDOR Velmara)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Velmara <support@quorvane.com>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://www.quorvane.com)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "equity and hand strength analysis for two-player Texas Hold'em")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Depends from the shared libraries the programs link (dpkg-shlibdeps).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The window draws its texts with DejaVu when the desktop offers no other font.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
# The extended description below the summary line; CPack indents it and marks the empty
# line between the paragraphs as a control file wants it.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Quorvane analyses two-player Texas Hold'em situations. Type or paint what
each player may hold as a hand range, give the board and any dead cards,
and it shows the exact equity of the two ranges, how a range hits the
board by hand strength, the equity of every hand, how equity moves on
every turn and river card, and the EV and fold equity of betting lines.

The package holds the desktop program quorvane and quorvane-eval, the
command line face of the same engine for scripts.")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
