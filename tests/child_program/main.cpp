// SPDX-License-Identifier: MIT

// Writes how it was started into the file "done" beside it. Windows alone.

#include <string>

#include <windows.h>

int main() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder = path;
    folder.resize(folder.find_last_of(L'\\') + 1);
    const std::wstring line = GetCommandLineW();
    std::string utf8(line.size() * 3, '\0');
    utf8.resize(size_t(WideCharToMultiByte(CP_UTF8, 0, line.data(), int(line.size()), utf8.data(),
                                           int(utf8.size()), nullptr, nullptr)));
    const std::wstring notes = folder + L"notes";
    {
        HANDLE file = CreateFileW(notes.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        utf8 += "\npriority " + std::to_string(GetPriorityClass(GetCurrentProcess())) + "\n";
        DWORD written = 0;
        WriteFile(file, utf8.data(), DWORD(utf8.size()), &written, nullptr);
        CloseHandle(file);
    }
    return MoveFileW(notes.c_str(), (folder + L"done").c_str()) ? 0 : 1;
}
