#include "StandIn.h"

#include "DefaultCamera.h"
#include "PvDevice.h"
#include "StandInDevice.h"
#include "StandInKernel.h"

#include <cassert>
#include <thread>
#include <utility>

namespace
{

std::atomic<StandIn*> theStandIn{nullptr};

std::string callName(const std::string& text)
{
    return text.substr(0, text.find(' '));
}

} // namespace

StandIn::StandIn() : mCamera(""), mLink("link/"), mStream("stream/")
{
    assert(theStandIn == nullptr);
    theStandIn = this;
    addDefaultFeatures(mCamera);
    addDefaultLinkParameters(mLink);
    addDefaultStreamParameters(mStream);
}

StandIn::~StandIn()
{
    theStandIn = nullptr;
}

StandIn& StandIn::current()
{
    assert(theStandIn != nullptr);
    return *theStandIn;
}

void StandIn::answer(const std::string& name, std::deque<Code> results)
{
    const std::lock_guard lock(mMutex);
    mNextResults[name] = std::move(results);
}

void StandIn::answerAlways(const std::string& name, Code result)
{
    const std::lock_guard lock(mMutex);
    mLastingResults[name] = result;
}

PvResult StandIn::answerTo(const std::string& name, Code usual)
{
    const std::lock_guard lock(mMutex);
    if (auto queued = mNextResults.find(name);
        queued != mNextResults.end() && !queued->second.empty()) {
        const Code result = queued->second.front();
        queued->second.pop_front();
        return result;
    }
    const auto lasting = mLastingResults.find(name);
    return lasting == mLastingResults.end() ? usual : lasting->second;
}

void StandIn::record(Kind kind, const std::string& text)
{
    std::function<void(const std::string&)> hook;
    {
        const std::lock_guard lock(mMutex);
        mEvents.push_back({kind, isWorkerThread(), text});
        hook = mHook;
    }
    if (hook) {
        hook(text);
    }
}

PvResult StandIn::call(const std::string& name, const std::string& arguments, Code usual)
{
    record(Kind::Call, arguments.empty() ? name : name + " " + arguments);
    return answerTo(callName(name), usual);
}

void StandIn::log(const std::string& bytes)
{
    {
        const std::lock_guard lock(mMutex);
        mLogLines.push_back({Kind::Log, isWorkerThread(), bytes});
    }
    const bool terminated = bytes.ends_with("\r\n");
    record(Kind::Log,
           terminated ? "log " + bytes.substr(0, bytes.size() - 2) : "unterminated log " + bytes);
}

void StandIn::onCall(std::function<void(const std::string&)> hook)
{
    const std::lock_guard lock(mMutex);
    mHook = std::move(hook);
}

std::string StandIn::nextLabel(const std::string& className)
{
    const std::lock_guard lock(mMutex);
    const int number = ++mObjects[className];
    return number == 1 ? className : className + "#" + std::to_string(number);
}

Texts StandIn::take(bool worker, bool lookups)
{
    const std::lock_guard lock(mMutex);
    Texts texts;
    std::erase_if(mEvents, [&](const Event& event) {
        if (event.worker != worker || event.kind == Kind::Kernel || event.kind == Kind::Query) {
            return false;
        }
        if (lookups || event.kind != Kind::Lookup) {
            texts.push_back(event.text);
        }
        return true;
    });
    return texts;
}

Texts StandIn::takeCalls()
{
    return take(false, true);
}

Texts StandIn::takeCallsWithoutLookups()
{
    return take(false, false);
}

Texts StandIn::takeWorkerCalls()
{
    return take(true, true);
}

Texts StandIn::takeKind(Kind kind)
{
    const std::lock_guard lock(mMutex);
    Texts texts;
    std::erase_if(mEvents, [&](const Event& event) {
        if (event.kind == kind) {
            texts.push_back(event.text);
        }
        return event.kind == kind;
    });
    return texts;
}

Texts StandIn::takeKernelCalls()
{
    return takeKind(Kind::Kernel);
}

Texts StandIn::takeQueries()
{
    return takeKind(Kind::Query);
}

Texts StandIn::takeLogLines(bool worker)
{
    const std::lock_guard lock(mMutex);
    Texts lines;
    std::erase_if(mLogLines, [&](const Event& line) {
        if (line.worker == worker) {
            lines.push_back(line.text);
        }
        return line.worker == worker;
    });
    return lines;
}

Texts StandIn::takeLog()
{
    return takeLogLines(false);
}

Texts StandIn::takeWorkerLog()
{
    return takeLogLines(true);
}

void StandIn::forget()
{
    const std::lock_guard lock(mMutex);
    mEvents.clear();
    mLogLines.clear();
}

void StandIn::acceptSerialBytes(std::deque<std::uint32_t> counts)
{
    const std::lock_guard lock(mMutex);
    mSerialAccepts = std::move(counts);
}

std::uint32_t StandIn::serialBytesAccepted(std::uint32_t offered)
{
    const std::lock_guard lock(mMutex);
    if (mSerialAccepts.empty()) {
        return offered;
    }
    const std::uint32_t accepted = mSerialAccepts.front();
    mSerialAccepts.pop_front();
    return accepted;
}

void StandIn::feedSerial(const std::string& bytes)
{
    const std::lock_guard lock(mMutex);
    mSerialWaiting += bytes;
}

std::string StandIn::takeSerialBytes(std::uint32_t limit)
{
    const std::lock_guard lock(mMutex);
    std::string taken = mSerialWaiting.substr(0, limit);
    mSerialWaiting.erase(0, taken.size());
    return taken;
}

void StandIn::chooseCamera(const std::string& macAddress, const std::string& ipAddress)
{
    const std::lock_guard lock(mMutex);
    mChoice = {
        .confirmed = true, .selected = true, .macAddress = macAddress, .ipAddress = ipAddress};
}

void StandIn::confirmWithoutSelection()
{
    const std::lock_guard lock(mMutex);
    mChoice = {.confirmed = true, .selected = false, .macAddress = {}, .ipAddress = {}};
}

StandIn::Choice StandIn::choice() const
{
    const std::lock_guard lock(mMutex);
    return mChoice;
}

void StandIn::addDevice(PvDevice* device)
{
    const std::lock_guard lock(mMutex);
    mDevices.push_back(device);
}

void StandIn::removeDevice(PvDevice* device)
{
    const std::lock_guard lock(mMutex);
    std::erase(mDevices, device);
}

void StandIn::dropConnection()
{
    const std::lock_guard lock(mMutex);
    for (const PvDevice* device : mDevices) {
        device->impl().connected = false;
    }
}

void StandIn::loseLink()
{
    dropConnection();
    notifyLinkLost();
}

void StandIn::notifyLinkLost()
{
    std::vector<PvDevice*> devices;
    {
        const std::lock_guard lock(mMutex);
        devices = mDevices;
    }
    for (PvDevice* device : devices) {
        if (const auto sink = device->impl().sink.get()) {
            std::thread([=] { sink->OnLinkDisconnected(device); }).join();
        }
    }
}
