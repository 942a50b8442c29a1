# Profile-guided optimisation, in two passes over the same build directory (the Makefile's
# `make pgo` drives them):
#   PELLIX_PGO=GENERATE  instrumented build; running it writes counters to PELLIX_PGO_DIR
#   PELLIX_PGO=USE       rebuild that lays out and inlines the code from those counters
# GCC files each object's counters under its full object path, so the USE pass must compile
# the same sources into the same directory as the GENERATE pass did.
set(PELLIX_PGO OFF CACHE STRING "Profile-guided optimisation pass: OFF, GENERATE or USE")
set_property(CACHE PELLIX_PGO PROPERTY STRINGS OFF GENERATE USE)
set(PELLIX_PGO_DIR ${CMAKE_BINARY_DIR}/profile CACHE PATH "Where the training run's counters go")

if(PELLIX_PGO STREQUAL "GENERATE")
    # The training run, the search bench, runs on one thread, so plain counter increments
    # are exact; atomic ones made it seven times slower than the Release build, plain ones
    # cost a fraction of that.
    target_compile_options(pellix_core PUBLIC -fprofile-generate=${PELLIX_PGO_DIR}
                           -fprofile-update=single)
    target_link_options(pellix_core PUBLIC -fprofile-generate=${PELLIX_PGO_DIR})
elseif(PELLIX_PGO STREQUAL "USE")
    # The bench trains the search and evaluation only. -fprofile-partial-training compiles the
    # code it never ran (protocols, book, command-line modes) as a plain -O2/-O3 build would,
    # instead of for size; objects with no counters at all (the executables' main files) are
    # expected, so their warning is off. A counter file that no longer matches its source is
    # still an error: it means the profile is stale.
    target_compile_options(pellix_core PUBLIC -fprofile-use=${PELLIX_PGO_DIR}
                           -fprofile-partial-training -Wno-missing-profile)
    target_link_options(pellix_core PUBLIC -fprofile-use=${PELLIX_PGO_DIR})
elseif(NOT PELLIX_PGO STREQUAL "OFF")
    message(FATAL_ERROR "PELLIX_PGO is OFF, GENERATE or USE, not \"${PELLIX_PGO}\"")
endif()
