#include "compositions/ArchivePath.h"

#include <gtest/gtest.h>

namespace {

using namespace compositions;

void ExpectPieces(std::wstring_view path, std::wstring_view drive, std::wstring_view folder,
                  std::wstring_view name, std::wstring_view extension) {
    const PathPieces pieces = SplitPath(path);
    EXPECT_EQ(pieces.drive, drive) << ::testing::PrintToString(path);
    EXPECT_EQ(pieces.folder, folder) << ::testing::PrintToString(path);
    EXPECT_EQ(pieces.name, name) << ::testing::PrintToString(path);
    EXPECT_EQ(pieces.extension, extension) << ::testing::PrintToString(path);
}

TEST(ArchivePath, SplitsIntoDriveFolderNameAndExtension) {
    ExpectPieces(L"C:\\fx\\glow.txt", L"C:", L"\\fx\\", L"glow", L".txt");
    ExpectPieces(L"C:glow.txt", L"C:", L"", L"glow", L".txt");
    ExpectPieces(L"/home/fx/glow.txt", L"", L"/home/fx/", L"glow", L".txt");
    ExpectPieces(L"a/b\\c", L"", L"a/b\\", L"c", L"");
    ExpectPieces(L"\\\\server\\share\\glow.txt", L"", L"\\\\server\\share\\", L"glow", L".txt");
    ExpectPieces(L"\\\\?\\C:\\fx\\glow.txt", L"", L"\\\\?\\C:\\fx\\", L"glow", L".txt");
    ExpectPieces(L"\\\\?\\UNC\\s\\d\\x.y", L"", L"\\\\?\\UNC\\s\\d\\", L"x", L".y");
    ExpectPieces(L"fx.v2\\glow", L"", L"fx.v2\\", L"glow", L"");
    ExpectPieces(L"..\\glow", L"", L"..\\", L"glow", L"");
    ExpectPieces(L"a.b.c", L"", L"", L"a.b", L".c");
    ExpectPieces(L"glow.", L"", L"", L"glow", L".");
    ExpectPieces(L".glow", L"", L"", L"", L".glow");
    ExpectPieces(L"fx\\", L"", L"fx\\", L"", L"");
    ExpectPieces(L"", L"", L"", L"", L"");
    ExpectPieces(L":", L"", L"", L":", L"");
    ExpectPieces(L"C:", L"C:", L"", L"", L"");
}

TEST(ArchivePath, ReplacesTheExtension) {
    EXPECT_EQ(ArchivePathOf(L"C:\\fx\\glow.txt"), L"C:\\fx\\glow.mxf");
    EXPECT_EQ(ArchivePathOf(L"/fx.d/glow"), L"/fx.d/glow.mxf");
    EXPECT_EQ(ArchivePathOf(L"a.b.c"), L"a.b.mxf");
    EXPECT_EQ(ArchivePathOf(L"glow."), L"glow.mxf");
    EXPECT_EQ(ArchivePathOf(L".glow"), L".mxf");
    EXPECT_EQ(ArchivePathOf(L"fx\\"), L"fx\\.mxf");
    EXPECT_EQ(ArchivePathOf(L"glow.MXF"), L"glow.mxf");
    EXPECT_EQ(ArchivePathOf(L""), L".mxf");
}

TEST(ArchivePath, EndsAtTheFirstZero) {
    EXPECT_EQ(ArchivePathOf(std::wstring_view(L"a.txt\0b.dat", 11)), L"a.mxf");
}

std::wstring Long(std::size_t size) {
    return std::wstring(size, L'x');
}

TEST(ArchivePath, LimitsThePathBeforeAndAfter) {
    EXPECT_TRUE(ArchivePathOf(L"d\\" + Long(253) + L".txt"));   // 259 characters
    EXPECT_FALSE(ArchivePathOf(L"d\\" + Long(254) + L".txt"));  // 260
    EXPECT_TRUE(ArchivePathOf(L"d\\" + Long(253)));             // 259 with the new extension
    EXPECT_FALSE(ArchivePathOf(L"d\\" + Long(254)));            // 260 with it
}

TEST(ArchivePath, LimitsTheName) {
    EXPECT_TRUE(ArchivePathOf(Long(255)));
    EXPECT_FALSE(ArchivePathOf(Long(256)));
    EXPECT_FALSE(ArchivePathOf(Long(256) + L".a"));
}

TEST(ArchivePath, LimitsTheFolderWithItsSeparator) {
    EXPECT_TRUE(ArchivePathOf(Long(254) + L"\\"));
    EXPECT_FALSE(ArchivePathOf(Long(255) + L"\\"));
    // The drive does not count.
    EXPECT_FALSE(ArchivePathOf(L"C:" + Long(255) + L"\\"));
    EXPECT_TRUE(ArchivePathOf(L"C:" + Long(252) + L"\\"));
}

TEST(ArchivePath, LimitsTheExtension) {
    EXPECT_TRUE(ArchivePathOf(L"a." + Long(254)));
    EXPECT_FALSE(ArchivePathOf(L"a." + Long(255)));
}

}  // namespace
