#ifndef TELVO_TESTS_SOAK_PROCESSUSAGE_H
#define TELVO_TESTS_SOAK_PROCESSUSAGE_H

#include <cstddef>
#include <string>

/// What this process has of the system at present.
struct ProcessUsage {
    std::size_t memory = 0; // KiB resident, without what the allocator can give back
    std::size_t heap = 0;   // KiB allocated; 0 under a sanitizer's allocator
    std::size_t descriptors = 0;
    std::size_t threads = 0;

    static ProcessUsage now();
    /// "12345 KiB, of the heap 123 KiB, 5 descriptors, 3 threads"
    [[nodiscard]] std::string text() const;
};

#endif
