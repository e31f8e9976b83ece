#ifndef TELVO_TESTS_WINDOWS_PROCESSCOUNTS_H
#define TELVO_TESTS_WINDOWS_PROCESSCOUNTS_H

#include <ostream>

/// What a process has open and must give back.
struct ProcessCounts {
    unsigned long handles = 0;
    int threads = 0;
    bool operator==(const ProcessCounts&) const = default;
};

ProcessCounts countProcess();

std::ostream& operator<<(std::ostream& out, const ProcessCounts& counts);

#endif
