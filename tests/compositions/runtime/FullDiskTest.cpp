// What a full disk leaves of an archive. A limit on the size of files stands in for the disk: the
// system refuses the bytes beyond it just so.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include "compositions/ArchiveWriter.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"

namespace {

using namespace compositions;

class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler_(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        signal(SIGXFSZ, oldHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_;
    void (*oldHandler_)(int);
};

TEST(FullDisk, SavingAnswersFalseWhereverTheDiskEnds) {
    TempFolder folder;
    const std::size_t size = plain::Write(samples::Everything()).bytes.size();
    for (std::size_t limit = 0; limit <= size; limit += limit + 64 < size ? 64 : 1) {
        bool saved = true;
        {
            const FileSizeLimit disk(limit);
            ScriptArchive archive(folder.Wide("a.mxf"), false);
            saved = archive.serialize(samples::Everything());
            saved = archive.Close() && saved;
        }
        ASSERT_EQ(saved, limit == size) << limit << " of " << size;
    }
}

TEST(FullDisk, OldArchiveStaysAndNothingIsLeftBeside) {
    TempFolder folder;
    const std::string old = plain::Write(samples::Small()).bytes;
    const std::size_t size = plain::Write(samples::Everything()).bytes.size();
    for (std::size_t limit = 0; limit < size; limit += 97) {
        WriteBytes(folder / "a.mxf", old);
        bool written = true;
        {
            const FileSizeLimit disk(limit);
            written = WriteArchive(folder.Wide("a.mxf"), samples::Everything());
        }
        ASSERT_FALSE(written) << limit;
        ASSERT_EQ(ReadBytes(folder / "a.mxf"), old) << limit;
        std::size_t files = 0;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::directory_iterator(folder.Path())) {
            ++files;
        }
        ASSERT_EQ(files, 1u) << limit;
    }
}

}  // namespace
