# Run by CPack between installing into its staging tree and packing it. Debian keeps the
# programs of a package in section games in /usr/games, as its own chess engines do; the
# tarball and `make install` keep them in bin/, which is on every PATH.
if(CPACK_GENERATOR STREQUAL "DEB")
    set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
    file(RENAME ${usr}/bin ${usr}/games)
endif()
