// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/zip_writer.h"

#include "foundation/platform.h"
#include "foundation/types.h"

#include <cstdio>
#include <memory>
#include <minizip/zip.h>
#include <stdexcept>
#include <utility>
#include <vector>

#ifdef _WIN32
#include "foundation/native_path.h"

#include <minizip/iowin32.h>
#endif

namespace scene_tool {

namespace {

constexpr std::size_t BLOCK_BYTES = 1 << 20;
/// Sizes from here on need the long form of an entry; deflating may make a file a little larger.
constexpr Quenza::u64 ZIP64_FROM = 0xFFFF0000u;
constexpr uLong MADE_ON_UNIX = 3u << 8;
constexpr uLong READABLE_FILE = 0100644ul << 16;
constexpr uLong NAME_IS_UTF8 = 1u << 11;

zip_fileinfo entryInfo() {
    zip_fileinfo info{};
    info.tmz_date.tm_year = 1980;
    info.tmz_date.tm_mday = 1;
    info.external_fa = READABLE_FILE;
    return info;
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

zipFile createArchive(const std::string& path) {
#ifdef _WIN32
    zlib_filefunc64_def functions;
    fill_win32_filefunc64W(&functions);
    return zipOpen2_64(Quenza::systemPath(Quenza::nativePath(path)).c_str(), APPEND_STATUS_CREATE, nullptr,
                       &functions);
#else
    return zipOpen64(path.c_str(), APPEND_STATUS_CREATE);
#endif
}

} // namespace

ZipWriter::ZipWriter(const std::string& path) : path_(path), zip_(createArchive(path)) {
    if (!zip_)
        throw std::runtime_error("can't write '" + path_ + "'");
}

ZipWriter::~ZipWriter() {
    if (zip_)
        zipClose(zip_, nullptr);
}

void ZipWriter::check(int result, const std::string& doing) const {
    if (result < 0)
        throw std::runtime_error("can't write '" + path_ + "': " + doing + " failed");
}

void ZipWriter::addFile(const std::string& name, const std::string& source_path) {
    const std::unique_ptr<std::FILE, FileCloser> source(Quenza::PlatformUtils::openFile(source_path, "rb"));
    if (!source)
        throw std::runtime_error("can't read '" + source_path +
                                 "': " + Quenza::PlatformUtils::lastErrorText().toStdString());
    const Quenza::i64 size = Quenza::PlatformUtils::openFileSize(source.get());
    const zip_fileinfo info = entryInfo();
    check(zipOpenNewFileInZip4_64(zip_, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                  Z_DEFAULT_COMPRESSION, 0, -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY,
                                  nullptr, 0, MADE_ON_UNIX, NAME_IS_UTF8,
                                  static_cast<Quenza::u64>(size) >= ZIP64_FROM ? 1 : 0),
          "adding '" + name + "'");
    std::vector<char> block(BLOCK_BYTES);
    while (const std::size_t bytes = std::fread(block.data(), 1, block.size(), source.get()))
        check(zipWriteInFileInZip(zip_, block.data(), static_cast<unsigned>(bytes)), "adding '" + name + "'");
    if (std::ferror(source.get()))
        throw std::runtime_error("can't read '" + source_path + "'");
    check(zipCloseFileInZip(zip_), "adding '" + name + "'");
}

void ZipWriter::finish() {
    check(zipClose(std::exchange(zip_, nullptr), nullptr), "closing");
}

} // namespace scene_tool
