#include "LiveHost.h"

#include "Require.h"

#include <filesystem>
#include <fstream>
#include <set>

namespace
{

using Clock = std::chrono::steady_clock;

std::set<std::string> threads()
{
    std::set<std::string> ids;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        ids.insert(task.path().filename());
    }
    return ids;
}

} // namespace

LiveFigures& LiveFigures::operator+=(const LiveFigures& other)
{
    seconds += other.seconds;
    whole += other.whole;
    failed += other.failed;
    dropped += other.dropped;
    bytes += other.bytes;
    return *this;
}

LiveHost::LiveHost(const std::string& address, const LiveSettings& settings)
{
    require(mDevice.Connect(PvString(address.c_str()), PvAccessType::Exclusive).IsOK(),
            "connecting");
    openStream(address, settings.packetRing);
    require(
        mDevice.SetStreamDestination(mStream.GetLocalIPAddress(), mStream.GetLocalPort(), 0).IsOK(),
        "setting the destination");
    setInteger("Width", settings.width);
    setInteger("Height", settings.height);
    setInteger("GevSCPSPacketSize", settings.packetSize);
    auto* source = dynamic_cast<PvGenEnum*>(mDevice.GetGenParameters()->Get("AcquisitionSource"));
    require(source != nullptr && source->SetValue("Live").IsOK(), "choosing live images");
    mPipeline.SetBufferSize(static_cast<std::uint32_t>(settings.width * settings.height));
    require(mPipeline.SetBufferCount(settings.buffers).IsOK(), "setting the buffer count");
    require(mPipeline.Start().IsOK(), "starting the pipeline");
    execute("AcquisitionStart");
}

LiveHost::~LiveHost()
{
    auto* stop = dynamic_cast<PvGenCommand*>(mDevice.GetGenParameters()->Get("AcquisitionStop"));
    if (stop != nullptr) {
        (void)stop->Execute();
    }
}

LiveFigures LiveHost::take(std::chrono::milliseconds time)
{
    next();
    const std::int64_t bytesBefore = reading("BytesReceived");
    const std::int64_t droppedBefore = reading("BlocksDropped");
    const auto start = Clock::now();
    LiveFigures figures;
    while (Clock::now() - start < time) {
        (next() ? figures.whole : figures.failed) += 1;
    }
    figures.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    figures.bytes = static_cast<double>(reading("BytesReceived") - bytesBefore);
    figures.dropped = reading("BlocksDropped") - droppedBefore;
    return figures;
}

double LiveHost::receiverSeconds() const
{
    double nanoseconds = 0;
    std::ifstream("/proc/self/task/" + mReceiver + "/schedstat") >> nanoseconds;
    return nanoseconds * 1e-9;
}

std::int64_t LiveHost::reading(const char* name)
{
    std::int64_t value = 0;
    auto* counter = dynamic_cast<PvGenInteger*>(mStream.GetParameters()->Get(name));
    require(counter != nullptr && counter->GetValue(value).IsOK(), name);
    return value;
}

void LiveHost::openStream(const std::string& address, bool packetRing)
{
    auto* ring = dynamic_cast<PvGenInteger*>(mStream.GetParameters()->Get("PacketRing"));
    require(ring != nullptr && ring->SetValue(packetRing ? 1 : 0).IsOK(), "PacketRing");
    const auto before = threads();
    require(mStream.Open(PvString(address.c_str()), 0, 0, "").IsOK(), "opening the stream");
    for (const std::string& thread : threads()) {
        if (!before.contains(thread)) {
            mReceiver = thread;
        }
    }
}

void LiveHost::setInteger(const char* name, std::int64_t value)
{
    auto* feature = dynamic_cast<PvGenInteger*>(mDevice.GetGenParameters()->Get(name));
    require(feature != nullptr && feature->SetValue(value).IsOK(), name);
}

void LiveHost::execute(const char* name)
{
    auto* command = dynamic_cast<PvGenCommand*>(mDevice.GetGenParameters()->Get(name));
    require(command != nullptr && command->Execute().IsOK(), name);
}

bool LiveHost::next()
{
    PvBuffer* buffer = nullptr;
    PvResult operation;
    require(mPipeline.RetrieveNextBuffer(&buffer, 5000, &operation).IsOK(), "retrieving");
    (void)mPipeline.ReleaseBuffer(buffer);
    return operation.IsOK();
}
