# The WebAssembly build (emcmake, Debian's emscripten): the engine and the bench as
# JavaScript modules, each a factory (Pellix, PellixBench) that a Web Worker or Node calls
# with its settings, plus the .wasm beside it. Run as a Node program, a module starts at once
# with the command line. The memory grows on demand up to the 4 GB of 32-bit WebAssembly, so
# Hash in pellix.ini works as on other systems.
set(PELLIX_WEB_JS ${CMAKE_SOURCE_DIR}/src/platform/web_module.js
                  ${CMAKE_SOURCE_DIR}/src/platform/web_node_main.js)

function(pellix_web_module target factory)
    target_link_options(${target} PRIVATE
        -sMODULARIZE=1 -sEXPORT_NAME=${factory} -sENVIRONMENT=web,worker,node
        -sALLOW_MEMORY_GROWTH=1 -sMAXIMUM_MEMORY=4GB -sEXIT_RUNTIME=1 -sFORCE_FILESYSTEM=1
        -sEXPORTED_RUNTIME_METHODS=FS
        --pre-js ${CMAKE_SOURCE_DIR}/src/platform/web_module.js
        --extern-post-js ${CMAKE_SOURCE_DIR}/src/platform/web_node_main.js)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PELLIX_WEB_JS})
endfunction()

pellix_web_module(pellix Pellix)
pellix_web_module(pellix-bench PellixBench)

# The engine's input read may suspend the program to give the event loop a turn
# (web_module.js). Asyncify saves the stack of every function that can be on it then; the
# search that polls, dozens of plies deep, needs more than the default 4 KB to save it in.
target_link_options(pellix PRIVATE -sASYNCIFY=1 "-sASYNCIFY_IMPORTS=[readQueuedInput]"
                                   -sASYNCIFY_STACK_SIZE=262144)
