// Connects a camera, records for a moment, reads the recording back in blocks and checks it.
using System;
using System.Runtime.InteropServices;
using System.Text;
using System.Threading;
using Telvo;

public static class Host
{
    private const int Camera = 1; // any number: the id under which all functions find the camera

    // Kept for as long as the camera is connected: the library holds no reference to it.
    private static readonly ChangedCallback OnChanged =
        reason => Console.Error.WriteLine("the link to the camera is lost");

    public static int Main(string[] arguments)
    {
        if (arguments.Length < 2)
        {
            Console.Error.WriteLine("usage: Host MAC IP");
            return 2;
        }
        if (!Open(arguments[0], arguments[1]))
        {
            return 1;
        }
        try
        {
            Console.WriteLine("model " + Text("model"));
            Record(TimeSpan.FromMilliseconds(300));
            return ReadBack() ? 0 : 1;
        }
        finally
        {
            TelvoDll.expDisconnectGrabber(Camera);
        }
    }

    // A camera that did not start with user set 1 is prepared first, and connected once more.
    private static bool Open(string mac, string ip)
    {
        var settings = new ConnectionSettings();
        for (int attempt = 0; attempt < 2; ++attempt)
        {
            if (TelvoDll.expConnectGrabber(mac, ip, 1, ref settings, Camera) < 0)
            {
                break;
            }
            TelvoDll.expSetChangedCallback(OnChanged, Camera);
            if (TelvoDll.expInitializeGrabber(ref settings, Camera) >= 0)
            {
                return true;
            }
            TelvoDll.expDisconnectGrabber(Camera);
        }
        Console.Error.WriteLine("no camera " + mac + " at " + ip);
        return false;
    }

    private static string Text(string key)
    {
        var text = new byte[50];
        uint size = 50;
        TelvoDll.expGetParam(key, text, ref size, Camera);
        return Encoding.ASCII.GetString(text).TrimEnd('\0');
    }

    private static void Record(TimeSpan time)
    {
        TelvoDll.expStartRecordMode(Camera);
        Thread.Sleep(time);
        TelvoDll.expStopRecordMode(Camera);
    }

    private static bool ReadBack()
    {
        uint width = 0, height = 0, all = 0, perBlock = 0, first = 0;
        TelvoDll.expGetWidth(ref width, Camera);
        TelvoDll.expGetHeight(ref height, Camera);
        TelvoDll.expGetNumberOfAllRecordedFrames(ref all, Camera);
        TelvoDll.expStartFrameBlockTransfer(Camera);
        TelvoDll.expGetFrameBlockSize(ref perBlock, Camera);
        int gaps = 0;
        int expected = -1;
        while (first < all)
        {
            uint wanted = Math.Min(perBlock, all - first);
            long frames = 0;
            uint status = 0;
            TelvoDll.expGetRecordedFrameBlock(IntPtr.Zero, 0, first, wanted, Camera);
            IntPtr block = TelvoDll.expGetRecordedFrameBlockResult(IntPtr.Zero, ref frames,
                                                                   ref status, Camera);
            if (block == IntPtr.Zero)
            {
                break;
            }
            for (long i = 0; i < frames; ++i)
            {
                // The counter, as telvoFrameHeader() in the header reads it.
                var frame = new IntPtr(block.ToInt64() + i * width * height);
                int counter = (ushort)Marshal.ReadInt16(frame, 4);
                gaps += expected >= 0 && counter != expected ? 1 : 0;
                expected = (counter + 1) % 65536;
            }
            first += (uint)frames;
        }
        TelvoDll.expStopFrameBlockTransfer(Camera);
        Console.WriteLine(first + " of " + all + " frames read, " + gaps + " gaps");
        return all > 0 && first == all && gaps == 0;
    }
}
