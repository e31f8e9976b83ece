#include "CommandLine.h"

#include "FaultText.h"
#include "MachineMemory.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <stdexcept>

namespace camera
{
namespace
{

constexpr int kUsageError = 2;
// Bytes of the bootstrap registers that hold the names.
constexpr std::size_t kModelLength = 32;
constexpr std::size_t kSerialLength = 16;
constexpr std::size_t kUserNameLength = 16;
constexpr std::uint64_t kFastestFlash = std::uint64_t{1} << 40; // bytes a second
constexpr std::uint64_t kSlowestLink = 1'000'000;               // bits a second
constexpr std::uint64_t kFastestLink =
    400'000'000'000; // bits a second; beyond it comes no Ethernet

using Texts = std::vector<std::string>;

/// What CLI11 collects as text and the camera wants as something better.
struct RawTexts {
    std::string sensor;
    std::optional<std::uint64_t> memory;
    std::string send = "joined";
    Texts settings;
    Texts missing;
    Texts unavailable;
    Texts packetFaults;
    Texts frameFaults;
    Texts accessFaults;
    std::uint32_t triggerEvery = 0;
    std::uint32_t silentAfter = 0;
    std::uint32_t silentFor = 0;
    std::uint32_t flashBusy = 0;
};

std::string modelList()
{
    std::string list;
    for (const CameraModel& model : knownModels()) {
        list += (list.empty() ? "" : ", ") + std::string(model.name);
    }
    return list;
}

CLI::Validator atMost(std::size_t length)
{
    return {[length](const std::string& text) {
                return text.size() <= length
                           ? std::string()
                           : "'" + text + "' is longer than " + std::to_string(length) + " bytes";
            },
            ""};
}

/// Unlike CLI::Range it refuses what is not a number, too.
CLI::Validator share()
{
    return {[](const std::string& text) {
                double value = -1;
                const bool valid =
                    CLI::detail::lexical_cast(text, value) && value >= 0.0 && value <= 1.0;
                return valid ? std::string() : "'" + text + "' is not a share from 0 to 1";
            },
            ""};
}

void addIdentity(CLI::App& app, CommandLine& line, RawTexts& raw)
{
    CameraOptions& camera = line.camera;
    app.add_option("--address", line.addresses,
                   "IPv4 address to listen on; repeat it for several cameras")
        ->default_str("127.0.0.11");
    app.add_option("--mac", camera.mac, "MAC address (default: from the address)");
    app.add_option("--model", camera.model,
                   "Model name, any text; sensor and limits are known for: " + modelList())
        ->check(atMost(kModelLength))
        ->capture_default_str();
    app.add_option("--sensor", raw.sensor, "Sensor size WIDTHxHEIGHT instead of the model's");
    app.add_flag("--colour", camera.colour, "Bayer sensor; starts with BayerRG8");
    app.add_option("--serial", camera.serial,
                   "Serial number, at most 16 characters (default: from the address)")
        ->check(atMost(kSerialLength));
    app.add_option("--name", camera.userName, "User-defined name, at most 16 characters")
        ->check(atMost(kUserNameLength))
        ->capture_default_str();
    app.add_option("--description", camera.description,
                   "How the feature description is sent: xml, zip or deflate")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, DescriptionForm>{{"xml", DescriptionForm::Xml},
                                                   {"zip", DescriptionForm::StoredZip},
                                                   {"deflate", DescriptionForm::DeflatedZip}}))
        ->option_text("FORM=xml");
}

void addMemory(CLI::App& app, CommandLine& line, RawTexts& raw)
{
    CameraOptions& camera = line.camera;
    app.add_option("--memory", raw.memory,
                   "Recording memory, such as 512MB or 4GB: at least one image, at most what the "
                   "machine has")
        ->transform(CLI::AsSizeValue(false))
        ->option_text("SIZE=1GB");
    app.add_option("--state-file", camera.stateFile,
                   "Keeps user sets, name and data words over restarts");
    app.add_flag("--user-sets-prepared", camera.userSetsPrepared,
                 "UserSet1 is saved, selected and the default");
    app.add_option("--set", raw.settings, "NAME=VALUE: a feature's value at power-on");
    app.add_flag("--record-at-power-on", camera.recordAtPowerOn, "Records from the start");
    app.add_flag_callback(
        "--no-multisequence", [&camera] { camera.multisequence = false; },
        "The memory is one sequence");
    app.add_flag_callback(
        "--no-flash-card", [&camera] { camera.flashCard = false; }, "Without a flash card");
    app.add_flag_callback(
        "--no-irig-b", [&camera] { camera.irigB = false; }, "Without the time code input");
    app.add_option("--flash-rate", camera.flashBytesPerSecond, "Flash card, bytes a second")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(std::uint64_t{1}, kFastestFlash))
        ->option_text("SIZE=200MB");
    app.add_option("--flash-busy", raw.flashBusy, "Writes its flash card for so many ms at start");
    app.add_option("--trigger-every", raw.triggerEvery,
                   "A pulse on the trigger input every so many ms");
    app.add_option_function<std::string>(
        "--save-recordings",
        [&line](const std::string& folder) { // a path takes a plain text for UTF-8 on Linux alone
            line.recordingsFolder = std::u8string(folder.begin(), folder.end());
        },
        "Writes what was recorded when it ends: ADDRESS-SEQUENCE.raw in this folder");
    app.add_flag("--commands", line.readCommands,
                 "Reads from standard input, line by line: trigger, high, low, silent, talk, "
                 "lose RATE, quit");
}

void addSending(CLI::App& app, CommandLine& line, RawTexts& raw)
{
    constexpr const char* kGroup = "Sending";
    app.add_flag("--unpaced", line.camera.unpaced, "Sends as fast as it can")->group(kGroup);
    app.add_option("--send", raw.send,
                   "How packets are handed to the system: joined where it can take them so, for "
                   "the least work, or single, as they come from a cable")
        ->check(CLI::IsMember({"joined", "single"}))
        ->option_text("WAY=joined")
        ->group(kGroup);
    app.add_option("--link-rate", line.camera.linkRate,
                   "Sends no faster than a cable of so many bits a second, such as 1G or 10G; "
                   "live images for which it is too slow are left out (default: no limit)")
        ->transform(CLI::AsNumberWithUnit(
            std::map<std::string, std::uint64_t>{{"M", 1'000'000}, {"G", 1'000'000'000}}))
        ->check(CLI::Range(kSlowestLink, kFastestLink))
        ->option_text("BITS")
        ->group(kGroup);
}

void addFaults(CLI::App& app, CommandLine& line, RawTexts& raw)
{
    constexpr const char* kGroup = "Faults";
    const Limits& packetSizes = featureOf(FeatureId::GevSCPSPacketSize).limits;
    const auto rate = [&app](const char* name, double& target, const char* text) {
        app.add_option(name, target, text)->check(share())->option_text("RATE")->group(kGroup);
    };
    rate("--lose", line.rates.lose, "Share of stream packets that are lost, 0 to 1");
    rate("--repeat", line.rates.repeat, "Share that is sent twice");
    rate("--reorder", line.rates.reorder, "Share that comes up to 4 places later");
    rate("--delay", line.rates.delay, "Share that comes 2 ms late");
    rate("--lose-frames", line.frameLoss, "Share of whole frames that are lost");
    app.add_option("--fault-packet", raw.packetFaults, "lose|repeat|reorder|delay:PACKET[:BLOCKS]")
        ->group(kGroup);
    app.add_option("--fault-frame", raw.frameFaults,
                   "lose|repeat|reorder|jump|stop|silence:POSITION[:AMOUNT[:MS[:TIMES]]]")
        ->group(kGroup);
    app.add_option("--fault-access", raw.accessFaults,
                   "reject:FEATURE[:STATUS[:TIMES]], delay|late:FEATURE:MS[:TIMES], "
                   "corrupt:FEATURE:VALUE[:TIMES], drop|double:FEATURE[:TIMES]")
        ->group(kGroup);
    app.add_option("--missing", raw.missing, "A feature that the camera lacks")->group(kGroup);
    app.add_option("--unavailable", raw.unavailable, "A feature that is not available")
        ->group(kGroup);
    app.add_option("--serial-limit", line.serialLimit,
                   "Bytes that the serial line takes of one write")
        ->group(kGroup);
    app.add_option("--clamp-packet-size", line.packetSizeLimit,
                   "Greatest stream packet size, bytes")
        ->check(CLI::Range(packetSizes.minimum, packetSizes.maximum))
        ->group(kGroup);
    app.add_flag("--ignore-test-packets", line.ignoreTestPackets, "Sends no test packet")
        ->group(kGroup);
    app.add_flag("--ordered-range", line.orderedRange,
                 "StreamStartNumber must never be above StreamEndNumber")
        ->group(kGroup);
    app.add_option("--silent-after", raw.silentAfter, "Falls silent after so many ms (link loss)")
        ->group(kGroup);
    app.add_option("--silent-for", raw.silentFor, "and comes back after so many ms")->group(kGroup);
}

SensorSize parseSensor(const std::string& text)
{
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) {
        throw std::invalid_argument("'" + text + "' is not a size such as 1280x1024");
    }
    const SensorSize size{parseNumber(std::string_view(text).substr(0, cross)),
                          parseNumber(std::string_view(text).substr(cross + 1))};
    constexpr std::uint32_t kSmallest = 16;
    constexpr std::uint32_t kLargest = 2048; // the recording's descriptor ends there
    const auto fits = [](std::uint32_t side) { return side >= kSmallest && side <= kLargest; };
    if (!fits(size.width) || !fits(size.height)) {
        throw std::invalid_argument("a sensor has 16 to 2048 columns and lines");
    }
    return size;
}

std::uint64_t parseMemory(std::uint64_t bytes, const CameraOptions& camera)
{
    const SensorSize sensor = camera.sensor.value_or(modelFor(camera.model).sensor);
    const std::uint64_t image = std::uint64_t{sensor.width} * sensor.height;
    if (bytes < image) {
        throw std::invalid_argument("--memory: one image takes " + std::to_string(image) +
                                    " bytes");
    }
    const std::uint64_t most = machineMemory();
    if (most != 0 && bytes > most) {
        throw std::invalid_argument("--memory: this machine has " + std::to_string(most) +
                                    " bytes");
    }
    return bytes;
}

std::pair<FeatureId, std::int64_t> parseSetting(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) {
        throw std::invalid_argument("'" + text + "' is not NAME=VALUE");
    }
    const FeatureId feature = parseFeature(text.substr(0, equals));
    const std::int64_t value = parseNumber(std::string_view(text).substr(equals + 1));
    if (!canStartWith(featureOf(feature), value)) {
        throw std::invalid_argument("no camera starts with " + text);
    }
    return {feature, value};
}

void interpret(CommandLine& line, const RawTexts& raw)
{
    using std::chrono::milliseconds;
    if (!raw.sensor.empty()) {
        line.camera.sensor = parseSensor(raw.sensor);
    }
    if (raw.memory) {
        line.camera.memoryBytes = parseMemory(*raw.memory, line.camera);
    }
    line.camera.send =
        raw.send == "single" ? gige::net::SendMode::Single : gige::net::SendMode::Joined;
    for (const std::string& setting : raw.settings) {
        const auto [feature, value] = parseSetting(setting);
        line.camera.settings[feature] = value;
    }
    for (const std::string& name : raw.missing) {
        line.camera.missing.insert(parseFeature(name));
    }
    for (const std::string& name : raw.unavailable) {
        line.camera.unavailable.insert(parseFeature(name));
    }
    for (const std::string& text : raw.packetFaults) {
        line.packetFaults.push_back(parsePacketFault(text));
    }
    for (const std::string& text : raw.frameFaults) {
        line.frameFaults.push_back(parseFrameFault(text));
    }
    for (const std::string& text : raw.accessFaults) {
        line.accessFaults.push_back(parseAccessFault(text));
    }
    line.triggerEvery = milliseconds(raw.triggerEvery);
    line.silentAfter = milliseconds(raw.silentAfter);
    line.silentFor = milliseconds(raw.silentFor);
    line.camera.flashBusy = milliseconds(raw.flashBusy);
    if (line.addresses.empty()) {
        line.addresses.push_back(line.camera.address);
    }
    const bool single = line.addresses.size() == 1;
    if (!single && !(line.camera.mac.empty() && line.camera.stateFile.empty())) {
        throw std::invalid_argument("--mac and --state-file are for one camera");
    }
}

} // namespace

CommandLine parseCommandLine(int argc, const char* const* argv)
{
    CLI::App app(
        "A virtual high-speed camera that speaks GigE Vision. It ends with Ctrl-C; a taken "
        "address or a wrong option ends it with status 2.",
        "telvo-camera");
    app.set_version_flag("--version", "telvo-camera " TELVO_VERSION);
    CommandLine line;
    RawTexts raw;
    addIdentity(app, line, raw);
    addMemory(app, line, raw);
    addSending(app, line, raw);
    addFaults(app, line, raw);
    try {
        app.parse(argc, argv);
        interpret(line, raw);
    } catch (const CLI::CallForHelp&) {
        throw CommandLineExit{app.help(), 0};
    } catch (const CLI::CallForVersion& version) {
        throw CommandLineExit{version.what(), 0};
    } catch (const CLI::ParseError& error) {
        throw CommandLineExit{std::string("telvo-camera: ") + error.what(), kUsageError};
    } catch (const std::invalid_argument& error) {
        throw CommandLineExit{std::string("telvo-camera: ") + error.what(), kUsageError};
    }
    return line;
}

} // namespace camera
