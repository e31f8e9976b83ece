#include "CameraChoice.h"
#include "CameraSession.h"
#include "CancelFlag.h"
#include "Commands.h"
#include "Json.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <array>
#include <iostream>
#include <map>
#include <memory>
#include <string>

namespace telvo
{

namespace
{

struct SerialOptions {
    CameraOptions camera;
    std::string line;
    std::string end = "cr";
    bool json = false;
};

const std::map<std::string, std::string> kLineEnds{
    {"cr", "\r"}, {"lf", "\n"}, {"crlf", "\r\n"}, {"none", ""}};

constexpr std::size_t kLongestAnswer = 4096; // bytes

bool isLineEnd(char character)
{
    return character == '\r' || character == '\n';
}

/// Up to the end of the line, or until nothing comes for two seconds.
std::string readAnswer(const CameraSession& camera)
{
    const CancelFlag cancel;
    std::string answer;
    while (answer.size() < kLongestAnswer) {
        cancel.check();
        std::uint8_t byte = 0;
        std::uint32_t count = 1;
        if (expReadData(&byte, &count, camera.id()) != 0 || count == 0) {
            break;
        }
        const char character = static_cast<char>(byte);
        if (isLineEnd(character) && !answer.empty()) {
            return answer;
        }
        if (!isLineEnd(character)) { // what is left of the line before
            answer += character;
        }
    }
    camera.requireLink();
    return answer;
}

/// Answers to others' lines, such as requests for frames, may still wait.
void dropAnswers(const CameraSession& camera)
{
    std::array<std::uint8_t, kLongestAnswer> answers{};
    auto count = static_cast<std::uint32_t>(answers.size());
    expReadData(answers.data(), &count, camera.id());
}

void runSerial(const SerialOptions& options)
{
    const CameraSession camera(chooseCamera(options.camera));
    dropAnswers(camera);
    const std::string line = options.line + kLineEnds.at(options.end);
    const std::string bytes(line.c_str(), line.size() + 1); // the library logs it as a text
    if (expWriteData(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                     static_cast<std::uint32_t>(line.size()), camera.id()) != 0) {
        camera.fail("the camera does not take the line; has it a serial line?");
    }
    const std::string answer = readAnswer(camera);
    if (answer.empty()) {
        camera.fail("the camera does not answer; is the line one of its own, and --end right?");
    }
    if (options.json) {
        printJson({{"camera", camera.address().ip}, {"answer", answer}});
    } else {
        std::cout << answer << '\n';
    }
}

} // namespace

void addSerialCommand(const Command& app)
{
    const Command command =
        app.add("serial", "Send a line over a camera's serial line, print the answer");
    const auto options = std::make_shared<SerialOptions>();
    addCameraOptions(command, options->camera);
    command.option("line", options->line, "The line, in the camera's own language").required();
    command.option("--end", options->end, "What ends the line")
        .type("cr|lf|crlf|none")
        .oneOf({"cr", "lf", "crlf", "none"})
        .showDefault();
    addJsonOption(command, options->json);
    command.onRun([options] { runSerial(*options); });
}

} // namespace telvo
