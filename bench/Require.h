#ifndef TELVO_BENCH_REQUIRE_H
#define TELVO_BENCH_REQUIRE_H

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

/// Without this a figure would mean nothing. @throws std::runtime_error
inline void require(bool succeeded, const char* what)
{
    if (!succeeded) {
        throw std::runtime_error(std::string(what) + " failed");
    }
}

/// Runs a benchmark. @return the program's exit status: 1 if it threw
template <typename Run>
int exitStatus(Run run)
{
    try {
        run();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

#endif
