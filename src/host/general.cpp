// SPDX-License-Identifier: MIT
#include "host/general.h"

#include "host/tables.h"

void GePrint(const String& line) {
    HostTables()->general->Print(line);
}

String GeLoadString(int32_t id) {
    return HostTables()->general->LoadString(id);
}

bool GeLoadResource(const Filename& pluginPath) {
    return HostTables()->general->LoadResource(pluginPath);
}

void GeFreeResource() {
    HostTables()->general->FreeResource();
}

uint32_t GeGetMilliSeconds() {
    return HostTables()->general->GetMilliSeconds();
}

void GeSleep(uint32_t milliseconds) {
    HostTables()->general->Sleep(milliseconds);
}

Filename GeGetStartupPath() {
    return HostTables()->general->GetStartupPath();
}

int32_t GeGetCurrentOptimalThreads() {
    return HostTables()->general->GetThreadCount();
}

void GeFree(void* memory) {
    HostTables()->general->Free(memory);
}

void GetDateTimeNow(DateTime& now) {
    HostTables()->general->GetDateTimeNow(now);
}

BaseContainer* GetWorldContainerInstance() {
    return HostTables()->general->GetWorldContainer();
}

void StatusSetText(const String& text) {
    HostTables()->general->StatusSetText(text);
}

void StatusSetBar(int32_t percent) {
    HostTables()->general->StatusSetBar(percent);
}

void StatusClear() {
    HostTables()->general->StatusClear();
}

void SpecialEventAdd(int32_t messageId, uintptr_t parameter1, uintptr_t parameter2) {
    HostTables()->general->SpecialEventAdd(messageId, parameter1, parameter2);
}

void EventAdd() {
    HostTables()->general->EventAdd();
}

bool AddUserPreviewScene(const Filename& scene, int32_t pluginId) {
    return HostTables()->general->AddUserPreviewScene(scene, pluginId);
}

uint32_t CalcCRC32(const void* data, size_t byteCount, uint32_t seed) {
    return HostTables()->general->CalcCRC32(data, byteCount, seed);
}

bool GeFExist(const Filename& path, bool isDirectory) {
    return HostTables()->general->FileExists(path, isDirectory);
}

bool GeFCreateDir(const Filename& path) {
    return HostTables()->general->CreateDirectory(path);
}

bool GeFKill(const Filename& path, bool recursive) {
    return HostTables()->general->Kill(path, recursive);
}

bool GeFCopyFile(const Filename& source, const Filename& target, bool overwrite) {
    return HostTables()->general->CopyFile(source, target, overwrite);
}

bool GeFListDirectory(const Filename& folder, std::vector<Filename>& names) {
    return HostTables()->general->ListDirectory(folder, names);
}

bool GeExtractZip(const Filename& archive, const Filename& folder) {
    return HostTables()->general->ExtractZip(archive, folder);
}

bool GenerateTexturePath(const Filename& documentPath, const Filename& name, const Filename& extra,
                         Filename* found) {
    return HostTables()->general->GenerateTexturePath(documentPath, name, extra, found);
}

void Random::Init(uint32_t seed) {
    // A xorshift state of 0 would stay 0; the multiplication spreads neighbouring timer values apart.
    state_ = seed * 2654435761u + 0x9E3779B9u;
    if (state_ == 0) {
        state_ = 0x2545F491;
    }
}

float Random::Get01() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    // The upper 24 bits: a float holds them exactly, so the result stays below 1.
    return static_cast<float>(state_ >> 8) * (1.0f / 16777216.0f);
}
