#ifndef TELVO_TESTS_INTEGRATION_SCARCITY_H
#define TELVO_TESTS_INTEGRATION_SCARCITY_H

/// Takes the place of this program's allocator, of its way to new threads and of its sleep, for the
/// libraries that it loads, too: memory and threads run out when a test wants it, and nobody
/// sleeps.
namespace scarcity
{

/// Every allocation but the next `count` ones fails.
void leaveAllocations(long count);
/// The allocation behind the next `count` ones fails, and no other.
void failAllocationAfter(long count);
/// No thread can be started but the next `count` ones.
void leaveThreads(long count);
/// Everything is there again. @return whether something was refused since it became scarce
bool end();

} // namespace scarcity

#endif
