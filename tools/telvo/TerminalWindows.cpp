#include "Terminal.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace telvo
{

bool isTerminal(std::FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

void showUtf8()
{
    SetConsoleOutputCP(CP_UTF8);
}

void makeOutputBinary()
{
    _setmode(_fileno(stdout), _O_BINARY);
}

} // namespace telvo
