# Links one variant of a program into a relocatable object (see PellixCpuDispatch.cmake):
#   cmake -P link-variant.cmake VARIANT OUTPUT LD NM OBJDUMP OBJCOPY OBJECT... CORE_ARCHIVE
# The program's objects are linked with the members of the core archive they need. Then its
# main becomes pellix_main_VARIANT, and, for every variant but the baseline, each other
# symbol it defines takes the suffix .VARIANT, so no two copies of the engine share a
# name in the executable (the suffix is the one compilers give their own clones).
# CMAKE_ARGV0..2 are cmake, -P and this script.
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE 3 ${last})
    list(APPEND arguments "${CMAKE_ARGV${i}}")
endforeach()
list(POP_FRONT arguments variant output linker nm objdump objcopy)
set(inputs ${arguments})

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out
                    ERROR_VARIABLE err)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}: ${err}")
    endif()
    set(out "${out}" PARENT_SCOPE)
endfunction()

get_filename_component(dir ${output} DIRECTORY)
file(MAKE_DIRECTORY ${dir})
set(linked ${output}.linked)
run(${linker} -r -o ${linked} ${inputs})
# Local symbols too: a COMDAT group's name (the one that pairs a class's constructors or
# destructors) is a local symbol, and two groups of one name keep only the first.
run(${nm} --defined-only --format=posix ${linked})
string(REPLACE "\n" ";" lines "${out}")
set(names)
# Not the plain sections' own symbols (.text, .data); the COMDAT sections' ones (with a '$')
# go with their sections below. MinGW's .refptr.<name> pointers are COMDATs of their own.
foreach(line IN LISTS lines)
    string(REGEX MATCH "^[^ ]+" name "${line}")
    if(name AND NOT name MATCHES "^\\.[a-z]+$" AND NOT name MATCHES "\\$")
        list(APPEND names ${name})
    endif()
endforeach()
list(REMOVE_DUPLICATES names)
list(REMOVE_ITEM names main)
set(map "main pellix_main_${variant}\n")
if(NOT variant STREQUAL "baseline")
    foreach(name IN LISTS names)
        string(APPEND map "${name} ${name}.${variant}\n")
    endforeach()
endif()
# A PE linker tells COMDAT sections apart by their names (.text$<symbol>) and the section
# symbols of the same names, which the other symbols' new names do not change: both are
# renamed too. ELF sections have no '$' names.
set(sections)
if(NOT variant STREQUAL "baseline")
    run(${objdump} -h ${linked})
    string(REGEX MATCHALL "[^ \n]+\\$[^ \n]+" names "${out}")
    list(REMOVE_DUPLICATES names)
    foreach(name IN LISTS names)
        list(APPEND sections --rename-section "${name}=${name}.${variant}")
        # The section's own symbol, which names the COMDAT, goes with it.
        string(APPEND map "${name} ${name}.${variant}\n")
    endforeach()
endif()
file(WRITE ${output}.symbols "${map}")
run(${objcopy} --redefine-syms=${output}.symbols ${sections} ${linked} ${output})
file(REMOVE ${linked})
