#ifndef TELVO_GIGE_PV_ADDRESSTEXT_H
#define TELVO_GIGE_PV_ADDRESSTEXT_H

#include "Ipv4Address.h"
#include "PvString.h"

#include <optional>

/// Dotted IPv4 text, with or without brackets around it: hosts write masks as "[255.255.255.0]".
std::optional<gige::net::Ipv4Address> parseAddressText(const PvString& text);

#endif
