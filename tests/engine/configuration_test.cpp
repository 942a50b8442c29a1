// pellix.ini, read from the current directory when an engine is created: the hash size, the
// book switch and the book file, each with its default. Under Wine this reads the file through
// the Windows profile functions.
#include "engine/front_end.h"
#include "search/transposition_table.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

TEST(Configuration, HashAndBookComeFromPellixIni) {
    const fs::path home = fs::current_path();
    const fs::path dir  = fs::temp_directory_path() / "pellix-configuration-test";
    fs::create_directories(dir);
    fs::current_path(dir);
    // The engine the front end makes from the file: its table's size and whether it plays
    // from a book.
    auto engineFrom = [](const std::string& ini) {
        std::ofstream(fs::path("pellix.ini"), std::ios::binary) << ini;
        FrontEnd frontEnd(CommandSource{nullptr, nullptr});
        frontEnd.createEngine();
        frontEnd.openConfiguredBook();
        return std::pair{frontEnd.board->hashTable->megabytes, frontEnd.board->bookEnabled};
    };
    EXPECT_EQ(engineFrom("[Engine]\nHash=3\n"), std::pair(4u, false));
    EXPECT_EQ(engineFrom("; tuned\r\n[engine]\r\nhash = 16\r\n"), std::pair(16u, false));
    EXPECT_EQ(engineFrom("[Other]\nHash=256\n").first, 128u); // the default
    EXPECT_EQ(engineFrom("[Engine\n\xff\xfe=\n=\nHash\nHash==3\n[[]]\n").first, 128u);
    std::ofstream("pellixopenbook.bin", std::ios::binary) << "BOOK";
    EXPECT_FALSE(engineFrom("[Engine]\nHash=1\nBook=2\n").second);
    EXPECT_FALSE(engineFrom("[Engine]\nHash=1\nBook=1\nBookFile=missing.bin\n").second);
    fs::copy_file(PELLIX_OPENING_BOOK, "pellixopenbook.bin", fs::copy_options::overwrite_existing);
    EXPECT_TRUE(engineFrom("[Engine]\r\nHash=1\r\nBook=1\r\n").second); // the default file
    fs::current_path(home);
    fs::remove_all(dir);
}
