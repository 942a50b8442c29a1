# Links one variant of a program into a relocatable object (see PellixCpuDispatch.cmake):
#   cmake -P link-variant.cmake VARIANT OUTPUT LD NM OBJCOPY OBJECT... CORE_ARCHIVE
# The program's objects are linked with the members of the core archive they need. Then its
# main becomes pellix_main_VARIANT, and, for every variant but the baseline, each other
# symbol it defines takes the suffix .VARIANT, so no two copies of the engine share a
# name in the executable (the suffix is the one compilers give their own clones).
# CMAKE_ARGV0..2 are cmake, -P and this script.
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE 3 ${last})
    list(APPEND arguments "${CMAKE_ARGV${i}}")
endforeach()
list(POP_FRONT arguments variant output linker nm objcopy)
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
foreach(line IN LISTS lines)
    string(REGEX MATCH "^[^ .][^ ]*" name "${line}")
    list(APPEND names ${name})
endforeach()
list(REMOVE_DUPLICATES names)
list(REMOVE_ITEM names main)
set(map "main pellix_main_${variant}\n")
if(NOT variant STREQUAL "baseline")
    foreach(name IN LISTS names)
        string(APPEND map "${name} ${name}.${variant}\n")
    endforeach()
endif()
file(WRITE ${output}.symbols "${map}")
run(${objcopy} --redefine-syms=${output}.symbols ${linked} ${output})
file(REMOVE ${linked})
