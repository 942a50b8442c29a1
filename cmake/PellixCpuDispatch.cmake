# x86-64 programs that run on every x86-64 processor and use POPCNT where there is one.
# Population counts are on the engine's hot paths, and without the instruction the search
# runs several per cent slower; but Debian's amd64 baseline, and some processors Windows 10
# runs on (Core 2, early Atoms, Phenoms), lack it. So each program carries the engine twice:
# pellix_core and the program's own sources as they are, and compiled again with -mpopcnt.
# Each copy is linked with its program's objects into one relocatable object; the POPCNT
# copy's global symbols are then renamed (an nm listing turned into an objcopy map, see
# link-variant.cmake), so that the two copies of every function and table live side by side
# in one executable. The main of each copy becomes pellix_main_<variant>, and
# src/platform/x86_variant_main.cpp picks one by CPUID, once, at start.
set(PELLIX_VARIANT_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/link-variant.cmake)

# pellix_core again, from the same sources, with POPCNT.
get_target_property(core_sources pellix_core SOURCES)
add_library(pellix_core_popcnt STATIC EXCLUDE_FROM_ALL ${core_sources})
target_include_directories(pellix_core_popcnt PUBLIC
                           $<TARGET_PROPERTY:pellix_core,INTERFACE_INCLUDE_DIRECTORIES>)
target_compile_options(pellix_core_popcnt PUBLIC
                       $<TARGET_PROPERTY:pellix_core,INTERFACE_COMPILE_OPTIONS> -mpopcnt)

# One relocatable object for `target` built on `core`: its sources compiled with the core's
# flags, linked with the core's objects they need.
function(pellix_variant_object target core variant output)
    get_target_property(sources ${target} SOURCES)
    get_target_property(source_dir ${target} SOURCE_DIR)
    list(TRANSFORM sources PREPEND ${source_dir}/)
    set(objects ${target}-${variant}-objects)
    add_library(${objects} OBJECT EXCLUDE_FROM_ALL ${sources})
    target_link_libraries(${objects} PRIVATE ${core})
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -P ${PELLIX_VARIANT_SCRIPT} ${variant} ${output} ${CMAKE_LINKER}
                ${CMAKE_NM} ${CMAKE_OBJDUMP} ${CMAKE_OBJCOPY} $<TARGET_OBJECTS:${objects}>
                $<TARGET_FILE:${core}>
        DEPENDS ${PELLIX_VARIANT_SCRIPT} ${objects} $<TARGET_OBJECTS:${objects}> ${core}
        COMMENT "Linking the ${variant} variant of ${target}"
        COMMAND_EXPAND_LISTS VERBATIM)
endfunction()

# Makes `target` the program that chooses between the two copies.
function(pellix_dispatch_by_cpu target)
    set(baseline ${CMAKE_BINARY_DIR}/variants/${target}-baseline.o)
    set(popcnt ${CMAKE_BINARY_DIR}/variants/${target}-popcnt.o)
    pellix_variant_object(${target} pellix_core baseline ${baseline})
    pellix_variant_object(${target} pellix_core_popcnt popcnt ${popcnt})
    add_custom_target(${target}-variants DEPENDS ${baseline} ${popcnt})
    set_property(TARGET ${target} PROPERTY SOURCES
                 ${PROJECT_SOURCE_DIR}/src/platform/x86_variant_main.cpp)
    target_link_libraries(${target} PRIVATE ${baseline} ${popcnt})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${baseline} ${popcnt})
    add_dependencies(${target} ${target}-variants)
endfunction()

pellix_dispatch_by_cpu(pellix)
pellix_dispatch_by_cpu(pellix-bench)
