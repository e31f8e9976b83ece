#include "Program.h"

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

void printTo(const std::string& file)
{
    const int output = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
}

[[noreturn]] void become(const std::vector<std::string>& command)
{
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command) {
        words.push_back(const_cast<char*>(word.c_str())); // as execvp's signature demands
    }
    words.push_back(nullptr);
    execvp(words[0], words.data());
    _exit(127);
}

} // namespace

Program::Program(const std::vector<std::string>& command, const std::string& output)
    : mProcess(fork())
{
    if (mProcess == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (!output.empty()) {
            printTo(output);
        }
        become(command);
    }
}

Program::~Program()
{
    end();
}

void Program::wait()
{
    if (mProcess > 0) {
        waitpid(mProcess, nullptr, 0);
        mProcess = 0;
    }
}

void Program::end()
{
    if (mProcess > 0) {
        kill(mProcess, SIGTERM);
        wait();
    }
}
