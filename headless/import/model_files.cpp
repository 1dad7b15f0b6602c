// SPDX-License-Identifier: MIT
#include "headless/import/model_files.h"

#include <assimp/IOStream.hpp>
#include <memory>
#include <stdexcept>

namespace headless {

namespace {

class PatientStream : public Assimp::IOStream {
public:
    explicit PatientStream(std::unique_ptr<Assimp::IOStream> file) : file_(std::move(file)) {}

    size_t Read(void* buffer, size_t size, size_t count) override {
        const size_t done = file_->Read(buffer, size, count);
        if (done == 0 && size > 0 && count > 0) {
            askAgain();
        }
        return done;
    }
    size_t Write(const void* buffer, size_t size, size_t count) override {
        return file_->Write(buffer, size, count);
    }
    aiReturn Seek(size_t offset, aiOrigin origin) override { return file_->Seek(offset, origin); }
    size_t Tell() const override { return file_->Tell(); }
    size_t FileSize() const override { return file_->FileSize(); }
    void Flush() override { file_->Flush(); }

private:
    void askAgain() {
        // A reader that knows about the end asks once or twice.
        constexpr int PATIENCE = 1000;
        if (++readsAtEnd_ > PATIENCE) {
            throw std::runtime_error("the file ends too early");
        }
    }

    std::unique_ptr<Assimp::IOStream> file_;
    int readsAtEnd_ = 0;
};

} // namespace

Assimp::IOStream* ModelFiles::Open(const char* file, const char* mode) {
    std::unique_ptr<Assimp::IOStream> opened(DefaultIOSystem::Open(file, mode));
    return opened ? new PatientStream(std::move(opened)) : nullptr;
}

} // namespace headless
