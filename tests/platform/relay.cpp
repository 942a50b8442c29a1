// relay PROGRAM [ARGUMENT...]: runs a Windows program with its standard input on an
// anonymous pipe made here, and copies this process's own standard input into that pipe.
// Under Wine a Unix pipe on standard input cannot be peeked, while a pipe made with
// CreatePipe, as a Windows GUI makes it, can; the tests reach the Windows programs through
// this relay so that they meet the pipes they meet on Windows. The program writes straight
// to the relay's output, and its exit status is the relay's.
#include <string>
#include <windows.h>

namespace {

DWORD WINAPI copyInput(LPVOID pipe) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    char buffer[4096];
    DWORD got = 0, put = 0;
    while (ReadFile(input, buffer, sizeof buffer, &got, nullptr) && got > 0)
        if (!WriteFile(pipe, buffer, got, &put, nullptr))
            break;
    CloseHandle(pipe); // the program sees the end of its input
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    std::string command;
    for (int i = 1; i < argc; ++i)
        command += std::string(i > 1 ? " " : "") + "\"" + argv[i] + "\"";
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (argc < 2 || !CreatePipe(&readEnd, &writeEnd, &inherited, 0))
        return 127;
    SetHandleInformation(writeEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup{};
    startup.cb         = sizeof startup;
    startup.dwFlags    = STARTF_USESTDHANDLES;
    startup.hStdInput  = readEnd;
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError  = GetStdHandle(STD_ERROR_HANDLE);
    // The program lives no longer than the relay: a test that gives up on it kills the relay,
    // and an engine that has lost its input keeps waiting, as it should, forever.
    const HANDLE job = CreateJobObjectA(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    PROCESS_INFORMATION child{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                        nullptr, &startup, &child))
        return 127;
    AssignProcessToJobObject(job, child.hProcess);
    ResumeThread(child.hThread);
    CloseHandle(readEnd);
    CreateThread(nullptr, 0, copyInput, writeEnd, 0, nullptr);
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD status = 1;
    GetExitCodeProcess(child.hProcess, &status);
    // The copying thread may still wait for input that will never matter.
    ExitProcess(status);
}
