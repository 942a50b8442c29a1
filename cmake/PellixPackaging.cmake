# What `make install` puts where, and the packages CPack makes from the same rules:
#   Linux:   pellix_<version>_amd64.deb (prefix /usr, programs in /usr/games) and
#            pellix-<version>-linux-x86_64.tar.gz; from the arm64 cross build
#            pellix_<version>_arm64.deb and pellix-<version>-linux-arm64.tar.gz; from the
#            armhf cross build pellix_<version>_armhf.deb and pellix-<version>-linux-armhf.tar.gz
#   Windows: pellix-<version>-windows-x86_64.zip, one flat folder for Arena and Cute Chess
# The version is the one the engine prints ("id name Pellix 1.1b"); `make test-package`
# checks that the two agree.
set(PELLIX_PACKAGE_VERSION 1.1b)
set(PELLIX_PACKAGE_MAINTAINER
    "Pellix maintainers <maintainers@users.noreply.c-seed-52051a0b.example>"
    CACHE STRING "Maintainer named in the Debian package")

# Directories made by an install are 755 whatever the umask of the machine that builds.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
    # Everything in one folder: the engine finds pellix.ini and the book in the directory
    # it runs in, and the sample ini turns the book on.
    install(TARGETS pellix pellix-book RUNTIME DESTINATION .)
    install(FILES ${CMAKE_BINARY_DIR}/pellixopenbook.bin
            packaging/windows/pellix.ini
            packaging/windows/README-Windows.txt
            DESTINATION .)
    # The copyright file, which credits the games the book is made from.
    install(FILES packaging/copyright DESTINATION . RENAME copyright.txt)
else()
    # The engine and its tools, the opening book, manual pages in section 6 like Debian's
    # other engines, the engine-list file through which xboard offers Pellix in its Load
    # Engine dialog (xboard reads share/games/plugins/xboard under /usr and /usr/local), and
    # the copyright and change log every Debian package carries.
    include(GNUInstallDirs)
    install(TARGETS pellix pellix-book pellix-bench RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${CMAKE_BINARY_DIR}/pellixopenbook.bin
            DESTINATION ${CMAKE_INSTALL_DATADIR}/games/pellix)
    install(FILES doc/pellix.eng DESTINATION ${CMAKE_INSTALL_DATADIR}/games/plugins/xboard)

    # Manual pages and change logs go in compressed; -n leaves the name and time out of the
    # gzip header, so the same sources give the same package bytes.
    set(compressed)
    foreach(pair "doc/pellix.6;pellix.6" "doc/pellix-book.6;pellix-book.6"
                 "doc/pellix-bench.6;pellix-bench.6" "packaging/debian/changelog;changelog")
        list(GET pair 0 source)
        list(GET pair 1 name)
        set(output ${CMAKE_BINARY_DIR}/packaging/${name}.gz)
        add_custom_command(
            OUTPUT ${output}
            COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/${source}
                    ${CMAKE_BINARY_DIR}/packaging/${name}
            COMMAND gzip -9nf ${CMAKE_BINARY_DIR}/packaging/${name}
            DEPENDS ${PROJECT_SOURCE_DIR}/${source}
            VERBATIM)
        list(APPEND compressed ${output})
    endforeach()
    add_custom_target(pellix-compressed-docs ALL DEPENDS ${compressed})
    install(FILES ${CMAKE_BINARY_DIR}/packaging/pellix.6.gz
            ${CMAKE_BINARY_DIR}/packaging/pellix-book.6.gz
            ${CMAKE_BINARY_DIR}/packaging/pellix-bench.6.gz
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
    install(FILES packaging/copyright ${CMAKE_BINARY_DIR}/packaging/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()

set(CPACK_PACKAGE_NAME pellix)
set(CPACK_PACKAGE_VERSION ${PELLIX_PACKAGE_VERSION})
set(CPACK_PACKAGE_VENDOR "Pellix")
set(CPACK_PACKAGE_CONTACT ${PELLIX_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chess engine for UCI and XBoard interfaces")
set(CPACK_STRIP_FILES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME pellix-${PELLIX_PACKAGE_VERSION}-windows-x86_64)
else()
    set(CPACK_GENERATOR DEB TGZ)
    string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" system)
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
        # Debian's name for the architecture, in the tarball's name as in the .deb's.
        set(system linux-arm64)
    elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL "armv7l")
        set(system linux-armhf)
    endif()
    set(CPACK_PACKAGE_FILE_NAME pellix-${PELLIX_PACKAGE_VERSION}-${system})
    if(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
        # dpkg-shlibdeps and dpkg know only the build machine's libraries and architecture:
        # the cross build names its own, and depends on the libraries its programs link, at
        # the versions of the cross tool chain.
        set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
        set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
        set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.34), libgcc-s1 (>= 3.0), libstdc++6 (>= 11)")
    elseif(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR STREQUAL "armv7l")
        # The 32-bit ARM build, the same way.
        set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
        set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
        set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.34), libgcc-s1 (>= 3.5), libstdc++6 (>= 11)")
    else()
        set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    endif()

    set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/usr-games.cmake)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION games)
    set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xboard | polyglot")
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
    # The summary line above comes first; CPack indents these lines and writes " ." for
    # the empty one.
    set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
        "Pellix is a chess engine without a window of its own: a graphical interface
such as xboard, Cute Chess or Arena starts it and talks to it by the Universal
Chess Interface or the Chess Engine Communication Protocol. It searches with
alpha-beta over rotated bitboards and can play its first moves from the
opening book that comes with it.

The package also holds pellix-book, which makes opening books from PGN games
and lists what a book holds, and pellix-bench, the engine's speed and search
benchmarks. xboard offers Pellix in its Load Engine dialog once it is
installed.")
    if(CMAKE_SYSTEM_PROCESSOR STREQUAL "armv7l")
        # Debian's armhf compiler targets ARMv7: say which boards that leaves out.
        string(APPEND CPACK_DEBIAN_PACKAGE_DESCRIPTION "

This build is for 32-bit ARMv7 systems such as the 32-bit Raspberry Pi OS
on a Raspberry Pi 2, 3, 4 or 5; it does not run on the ARMv6 Pi 1 and Pi
Zero (the Zero 2 W is ARMv7 and runs it).")
    endif()
endif()
include(CPack)
