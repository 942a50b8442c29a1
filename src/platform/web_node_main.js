// Started as a program under Node ("node pellix.js -perft 5"), the module runs at once with
// the command line's arguments and reads standard input, as the native executable would;
// loaded with require() or in a worker, it waits to be called with the caller's settings.
if (typeof module == "object" && typeof require == "function" && require.main === module)
    module.exports({pellixStdin: true});
