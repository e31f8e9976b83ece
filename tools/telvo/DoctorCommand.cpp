#include "CameraChoice.h"
#include "CameraSession.h"
#include "Commands.h"
#include "Diagnosis.h"
#include "Json.h"
#include "ToolError.h"

#include "StreamReceiver.h"
#include "UdpSocket.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>

namespace telvo
{

namespace
{

struct DoctorOptions {
    CameraOptions camera;
    bool json = false;
};

constexpr std::array<const char*, 3> kKinds{"good", "hint", "problem"};

bool isProblem(const Finding& finding)
{
    return finding.kind == Finding::Kind::Problem;
}

void append(Findings& findings, const Findings& more)
{
    findings.insert(findings.end(), more.begin(), more.end());
}

/// The same request as the stream's.
Findings diagnoseBufferHere()
{
    auto socket = gige::net::UdpSocket::open({});
    return socket ? diagnoseBuffer(socket->setReceiveBuffer(gige::stream::kSocketBufferSize),
                                   gige::stream::kSocketBufferSize)
                  : Findings();
}

Findings diagnoseReached(const CameraAddress& camera)
{
    Findings findings;
    {
        const CameraLook look = lookAt(camera);
        append(findings, diagnoseCamera(look, look.linkSpeed()));
    }
    append(findings, diagnoseBufferHere());
    if (std::ranges::none_of(findings, isProblem)) { // a stream would disturb what goes on
        append(findings, diagnoseStream(probeStream(camera), camera.device.nic.mtu));
    }
    return findings;
}

Findings diagnose(const CameraOptions& options)
{
    const auto found = findCameras(options.search);
    if (found.empty()) {
        return diagnoseSilence(gige::control::usableInterfaces());
    }
    const gige::control::DiscoveredDevice device = findCamera(options.search, options.camera);
    Findings findings = diagnoseAddress(device);
    if (std::ranges::none_of(findings, isProblem)) {
        try {
            append(findings, diagnoseReached(chooseCamera(options)));
        } catch (const Cancelled&) {
            throw;
        } catch (const Failure& failure) {
            findings.push_back({Finding::Kind::Problem, failure.what()});
        }
    }
    return findings;
}

void print(const Findings& findings, bool asJson)
{
    Json json = Json::array();
    for (const Finding& finding : findings) {
        const char* const kind = kKinds[static_cast<std::size_t>(finding.kind)];
        json.push_back({{"kind", kind}, {"text", finding.text}, {"advice", finding.advice}});
        if (!asJson) {
            std::cout << kind << ": " << finding.text
                      << (finding.advice.empty() ? "" : "\n  -> " + finding.advice) << '\n';
        }
    }
    if (asJson) {
        printJson(json);
    }
}

void runDoctor(const DoctorOptions& options)
{
    const Findings findings = diagnose(options.camera);
    print(findings, options.json);
    if (std::ranges::any_of(findings, isProblem)) {
        throw ExitStatus(kExitFailure); // the reason was told
    }
}

} // namespace

void addDoctorCommand(const Command& app)
{
    const Command command = app.add("doctor", "Find out why pictures do not come, and what to do");
    const auto options = std::make_shared<DoctorOptions>();
    addCameraOptions(command, options->camera);
    addJsonOption(command, options->json);
    command.footer("It takes live pictures for a moment where nobody has the camera and it is at "
                   "rest, and\nleaves it as it was. Exit status 1: there is a problem.");
    command.onRun([options] { runDoctor(*options); });
}

} // namespace telvo
