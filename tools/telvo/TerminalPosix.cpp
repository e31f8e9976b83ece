#include "Terminal.h"

#include <unistd.h>

namespace telvo
{

bool isTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) == 1;
}

void showUtf8() {} // terminals here show UTF-8 as they are

void makeOutputBinary() {} // a stream is always binary here

} // namespace telvo
