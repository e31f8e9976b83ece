/// A scripted stand-in for everything below the library: the Pv* classes and the kernel calls.
/// It answers from a script and writes down, in order, what the library asked of it.
///
///     StandIn s;                                       // one per test, see src/GrabberTest.h
///     s.camera().integer("Width").range(16, 640);      // change what the test is about
///     s.camera().enumeration("CameraState").next({"Live", "Live"}); // two answers, then its value
///     s.camera().remove("GainRaw");                    // the camera lacks a feature
///     s.answer("Width.SetValue", {Code::Busy});        // one call fails, the next ones do not
///     s.answerAlways("PvDevice.Connect", Code::NotFound);
///     …call an export…
///     EXPECT_EQ(s.takeCalls(), (Texts{"Get Width", "Width.GetMin", "Width.GetMax",
///                                     "Width.SetValue 640", "log -- GEN setCurrentWidth 640"}));
///
/// How calls are written down: `Class.Operation arguments` or `Feature.Operation arguments`.
/// - A look-up by name is "Get Width". Parameters of the link and of the stream carry the array's
///   name: "Get link/AnswerTimeout", "stream/RequestTimeout.SetValue 1100".
/// - "Sleep 500" is a sleep that was not slept; it moves the tick count on by 500.
/// - "log …" is a debug line without its CR LF ("unterminated log …" had none).
/// - The second and later objects of a class carry a number: "PvDevice#2.Disconnect".
/// The part before the first blank is the call's name, under which its results are scripted.
/// Values given to `answer` replace the stand-in's own result; a call that fails changes nothing.
/// IsAvailable is false for any result but Ok.
///
/// Left to themselves, parameters behave as a camera's: SetValue refuses what is out of range, no
/// entry of the enumeration, or unavailable; commands do nothing; reads give the last value.
/// Nothing changes by itself: a poll for a state ends when the script says so.
///
/// Threads. Calls of threads made with CreateThread are kept apart from the others', so that each
/// list is in a fixed order: takeCalls() and takeLog() are for the test's own thread (and the one
/// that loseLink() notifies on), takeWorkerCalls() and takeWorkerLog() for the workers. All members
/// may be called from any thread.
#ifndef TELVO_TESTS_STANDIN_STANDIN_H
#define TELVO_TESTS_STANDIN_STANDIN_H

#include "FrameFeed.h"
#include "PvResult.h"
#include "ScriptedArray.h"
#include "Texts.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

class PvDevice;

using Code = PvResult::Code;

class StandIn
{
  public:
    StandIn();
    ~StandIn();
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    /// The one that exists.
    static StandIn& current();

    // --- script ---------------------------------------------------------------------------------

    /// The camera's features; from the start those of DefaultCamera.cpp.
    ScriptedArray& camera() { return mCamera; }
    /// PvDevice::GetGenLink.
    ScriptedArray& link() { return mLink; }
    /// PvStream::GetParameters.
    ScriptedArray& stream() { return mStream; }

    /// What PvPipeline::RetrieveNextBuffer delivers. A retrieval without limit waits for more.
    FrameFeed& pipelineFeed() { return mPipelineFeed; }
    /// What PvStream::RetrieveBuffer delivers. With nothing fed it fails with TIMEOUT at once.
    FrameFeed& streamFeed() { return mStreamFeed; }

    /// Results of the next calls of this name; then the usual ones again.
    void answer(const std::string& name, std::deque<Code> results);
    /// Result of every further call of this name that has no queued one.
    void answerAlways(const std::string& name, Code result);

    /// Bytes that the next serial writes accept (all, once the list is used up).
    void acceptSerialBytes(std::deque<std::uint32_t> counts);
    /// Bytes waiting in the serial receive buffer.
    void feedSerial(const std::string& bytes);

    /// The user chooses this camera in the device finder (else the dialog is cancelled).
    void chooseCamera(const std::string& macAddress, const std::string& ipAddress);
    /// The dialog ends with success, but nothing is selected.
    void confirmWithoutSelection();

    /// The link of every connected device is lost: IsConnected turns false, and registered sinks
    /// are told on a thread of their own, which has ended when this returns.
    void loseLink();
    /// Only the second half: the sinks are told while IsConnected still gives true.
    void notifyLinkLost();
    /// Connected devices report false from now on; nobody is told.
    void dropConnection();
    /// PvStream::IsOpen is false from now on.
    void dropStreams() { mStreamsDropped = true; }

    /// GetTickCount's answer, milliseconds.
    void setTick(std::uint32_t milliseconds) { mTick = milliseconds; }

    /// Runs at every recorded call, on the calling thread, after it was written down and before
    /// it is answered. May use this object.
    void onCall(std::function<void(const std::string& call)> hook);

    // --- what happened --------------------------------------------------------------------------

    /// Calls, look-ups and log lines since the last take; not the queries and kernel calls below.
    Texts takeCalls();
    /// The same without "Get …", for long sequences.
    Texts takeCallsWithoutLookups();
    Texts takeWorkerCalls();
    /// "CreateThread", "CreateEventA", "SetEvent", "WaitForSingleObject 5000",
    /// "WaitForSingleObject INFINITE", "CloseHandle", of all threads.
    Texts takeKernelCalls();
    /// Questions without effect: "PvDevice.IsConnected", "PvStream.IsOpen",
    /// "PvStream.GetLocalIPAddress", "PvStream.GetLocalPort", "PvSerialPortIPEngine.IsOpened";
    /// and the ends of devices, streams and serial ports: "PvDevice destroyed".
    Texts takeQueries();
    /// Debug lines byte for byte, CR LF included. They stay in the calls too.
    Texts takeLog();
    Texts takeWorkerLog();
    /// Forgets all that was recorded.
    void forget();

    // --- for the classes of the stand-in --------------------------------------------------------

    enum class Kind { Call, Lookup, Log, Kernel, Query };

    void record(Kind kind, const std::string& text);
    /// The scripted result for a call of this name, else the usual one.
    PvResult answerTo(const std::string& name, Code usual);
    /// Records a call and answers it.
    PvResult call(const std::string& name, const std::string& arguments = {},
                  Code usual = Code::Ok);
    void log(const std::string& bytes);
    /// "PvDevice" for the first object of the class, then "PvDevice#2", …
    std::string nextLabel(const std::string& className);

    bool streamsDropped() const { return mStreamsDropped; }
    void addDevice(PvDevice* device);
    void removeDevice(PvDevice* device);
    std::uint32_t tick() const { return mTick; }
    void advanceTick(std::uint32_t milliseconds) { mTick += milliseconds; }
    std::uint32_t serialBytesAccepted(std::uint32_t offered);
    std::string takeSerialBytes(std::uint32_t limit);

    struct Choice {
        bool confirmed = false;
        bool selected = false;
        std::string macAddress;
        std::string ipAddress;
    };
    Choice choice() const;

    /// Guards the scripted values of all parameters too.
    std::mutex& mutex() const { return mMutex; }

  private:
    struct Event {
        Kind kind;
        bool worker;
        std::string text;
    };

    Texts take(bool worker, bool lookups);
    Texts takeKind(Kind kind);
    Texts takeLogLines(bool worker);

    mutable std::mutex mMutex;
    std::vector<Event> mEvents;
    std::vector<Event> mLogLines; // the bytes; their place among the calls is in mEvents
    std::map<std::string, std::deque<Code>> mNextResults;
    std::map<std::string, Code> mLastingResults;
    std::map<std::string, int> mObjects;
    std::vector<PvDevice*> mDevices;
    std::function<void(const std::string&)> mHook;
    std::deque<std::uint32_t> mSerialAccepts;
    std::string mSerialWaiting;
    Choice mChoice;
    std::atomic<std::uint32_t> mTick{0};
    std::atomic<bool> mStreamsDropped{false};

    FrameFeed mPipelineFeed;
    FrameFeed mStreamFeed;
    ScriptedArray mCamera;
    ScriptedArray mLink;
    ScriptedArray mStream;
};

#endif
