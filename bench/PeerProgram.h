#ifndef TELVO_BENCH_PEERPROGRAM_H
#define TELVO_BENCH_PEERPROGRAM_H

#include "Program.h"

#include <string>
#include <vector>

/// An independent program that runs beside the benchmark, with its output in a file.
class PeerProgram
{
  public:
    explicit PeerProgram(const std::vector<std::string>& command);
    ~PeerProgram();
    PeerProgram(const PeerProgram&) = delete;
    PeerProgram& operator=(const PeerProgram&) = delete;

    static bool isInstalled(const std::string& name);

    /// CPU seconds that all its threads have used.
    double cpuSeconds() const;
    /// Waits for its end. @return what it printed
    std::string finish();

  private:
    std::string mOutput; // file
    Program mProgram;
};

#endif
