#ifndef TELVO_TESTS_SRC_API_CALLSFROMC_H
#define TELVO_TESTS_SRC_API_CALLSFROMC_H

#include <stdint.h> // NOLINT(modernize-deprecated-headers): C

#ifdef __cplusplus
extern "C" {
#endif

/// Connects, initialises, reads the width and disconnects a camera, from a C11 source.
/// @return the width; -1 when a step failed
int32_t readWidthFromC(const char* macAddress, const char* ipAddress, int32_t cameraId);

/// Bytes from the start of the settings block to its output data rate, as C lays it out.
uint32_t offsetOfOutputDataRateInC(void);
uint16_t frameCounterInC(const uint8_t* frame);

#ifdef __cplusplus
}
#endif

#endif
