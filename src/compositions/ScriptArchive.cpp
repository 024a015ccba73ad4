#include "compositions/ScriptArchive.h"

#include <string_view>
#include <utility>

#include "compositions/ArchiveBody.h"
#include "compositions/ArchiveException.h"
#include "compositions/ArchiveHeader.h"
#include "platform/FileMove.h"

namespace compositions {
namespace {

constexpr std::int32_t kNoVersion = -1;

}  // namespace

ScriptArchive::ScriptArchive(const std::wstring& path, bool loading) : loading_(loading) {
    try {
        Open(path);
    } catch (...) {
        version_ = kNoVersion;
        stream_.close();
    }
}

void ScriptArchive::Open(const std::wstring& path) {
    const auto direction = loading_ ? std::ios::in : std::ios::out | std::ios::trunc;
    stream_.open(platform::StreamPath(path), direction | std::ios::binary);
    if (!stream_.is_open()) return;
    if (loading_) {
        ReadHeader();
    } else {
        WriteHeader();
    }
}

void ScriptArchive::WriteHeader() {
    stream_.write(kArchiveSignature.data(), kArchiveSignature.size());
    version_ = kWrittenVersion;
    stream_.write(reinterpret_cast<const char*>(&version_), sizeof version_);
}

void ScriptArchive::ReadHeader() {
    // Past the stream, so that a file that is no archive leaves its state alone.
    char signature[kArchiveSignature.size()];
    const std::streamsize got = stream_.rdbuf()->sgetn(signature, sizeof signature);
    if (got != sizeof signature ||
        std::string_view(signature, sizeof signature) != kArchiveSignature) {
        stream_.close();
        return;
    }
    std::int32_t version;
    if (stream_.read(reinterpret_cast<char*>(&version), sizeof version)) version_ = version;
}

bool ScriptArchive::serialize(CompositionDescription& description) {
    if (!loading_) return serialize(std::as_const(description));
    try {
        Load(description);
        return true;
    } catch (...) {
        return false;
    }
}

bool ScriptArchive::serialize(const CompositionDescription& description) {
    if (loading_) return false;
    try {
        Save(description);
        return true;
    } catch (...) {
        return false;
    }
}

bool ScriptArchive::Close() {
    if (!stream_.is_open()) return false;
    stream_.close();
    return !stream_.fail();
}

// One read of all that is left serves better than thousands of small ones.
std::string ScriptArchive::ReadRest() {
    const std::streamoff begin = stream_.tellg();
    const std::streamoff end = stream_.seekg(0, std::ios::end).tellg();
    stream_.seekg(begin);
    if (!stream_ || end < begin) throw arch_exception();
    std::string bytes(static_cast<std::size_t>(end - begin), '\0');
    stream_.read(bytes.data(), end - begin);
    if (!stream_) throw arch_exception();
    return bytes;
}

void ScriptArchive::Load(CompositionDescription& description) {
    const std::streamoff begin = stream_.tellg();
    const std::string bytes = ReadRest();
    const std::size_t taken = LoadArchiveBody(bytes, description);
    stream_.seekg(begin + static_cast<std::streamoff>(taken));
}

void ScriptArchive::Save(const CompositionDescription& description) {
    std::string bytes;
    SaveArchiveBody(description, bytes);
    stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream_.flush();
    if (!stream_) throw arch_exception();
}

}  // namespace compositions
