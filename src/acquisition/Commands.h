#ifndef TELVO_ACQUISITION_COMMANDS_H
#define TELVO_ACQUISITION_COMMANDS_H

#include "PvGenParameter.h"

/// Starts a camera command, if the camera has it. Its outcome shows in the camera's state only.
inline void execute(PvGenCommand* command)
{
    if (command != nullptr) {
        command->Execute();
    }
}

#endif
