#ifndef TELVO_TESTS_STANDIN_STANDINKERNEL_H
#define TELVO_TESTS_STANDIN_STANDINKERNEL_H

/// Whether CreateThread made the calling thread.
bool isWorkerThread();

#endif
