// SPDX-License-Identifier: MIT
#include "support/user_profile.h"

#include <cstdlib>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <fstream>
#endif

namespace Quenza {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32

// By this variable scripts/run-windows lets the system name the folder.
constexpr const char* APP_DATA = "APPDATA";

void setVariable(const std::string& name, const std::string& value) {
    _putenv_s(name.c_str(), value.c_str());
}

void unsetVariable(const std::string& name) {
    _putenv_s(name.c_str(), "");
}

constexpr const wchar_t* RENDERERS = L"Software\\Tessaly Works";
constexpr const wchar_t* FOLDER = L"InstallDirectory";

std::wstring keyOf(const std::wstring& edition) {
    return std::wstring(RENDERERS) + L"\\" + edition;
}

std::map<std::wstring, std::wstring> readInstalled() {
    std::map<std::wstring, std::wstring> found;
    for (const wchar_t* const edition : {L"Quenza Renderer", L"Quenza RT"}) {
        wchar_t folder[1024] = {};
        DWORD size = sizeof folder;
        if (RegGetValueW(HKEY_CURRENT_USER, keyOf(edition).c_str(), FOLDER, RRF_RT_REG_SZ, nullptr, folder,
                         &size) == ERROR_SUCCESS) {
            found[edition] = folder;
        }
    }
    return found;
}

void writeInstalled(const std::map<std::wstring, std::wstring>& folders) {
    RegDeleteTreeW(HKEY_CURRENT_USER, RENDERERS);
    for (const auto& [edition, folder] : folders) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, keyOf(edition).c_str(), FOLDER, REG_SZ, folder.c_str(),
                                  DWORD((folder.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
}

HANDLE takeMutex() {
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, L"Local\\Quenza tests with the registry");
    WaitForSingleObject(mutex, INFINITE); // also one that a test left by a crash
    return mutex;
}

#else

constexpr const char* APP_DATA = "XDG_CONFIG_HOME";

void setVariable(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void unsetVariable(const std::string& name) {
    unsetenv(name.c_str());
}

#endif

} // namespace

Variable::Variable(std::string name, const std::string& value) : name_(std::move(name)) {
    if (const char* const old = std::getenv(name_.c_str())) {
        old_ = old;
    }
    setVariable(name_, value);
}

Variable::~Variable() {
    if (old_) {
        setVariable(name_, *old_);
    } else {
        unsetVariable(name_);
    }
}

#ifdef _WIN32

UserProfile::UserProfile(fs::path appData)
    : mutex_(takeMutex()), appData_(std::move(appData)), variable_(APP_DATA, appData_.string()),
      installed_(readInstalled()) {
    // The system names no folder that isn't there.
    fs::create_directories(appData_);
}

UserProfile::~UserProfile() {
    writeInstalled(installed_);
    ReleaseMutex(mutex_);
    CloseHandle(mutex_);
}

void UserProfile::install(const fs::path& renderer, const std::string& edition) const {
    std::map<std::wstring, std::wstring> folders;
    if (!renderer.empty()) {
        folders[std::wstring(edition.begin(), edition.end())] = renderer.wstring();
    }
    writeInstalled(folders);
}

#else

UserProfile::UserProfile(fs::path appData)
    : appData_(std::move(appData)), variable_(APP_DATA, appData_.string()) {}

UserProfile::~UserProfile() = default;

void UserProfile::install(const fs::path& renderer, const std::string& edition) const {
    fs::create_directories(appData_);
    std::ofstream file(appData_ / "registry.ini");
    if (!renderer.empty()) {
        file << "[Software\\Tessaly Works\\" << edition << "]\nInstallDirectory=" << renderer.string()
             << "\n";
    }
    file.close();
    ASSERT_TRUE(file.good());
}

#endif

} // namespace Quenza
