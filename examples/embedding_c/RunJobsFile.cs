// A C# program with a job engine of its own: runs the jobs of a jobs file and shows each change as JSON.
// Usage: RunJobsFile SETTINGS_FILE JOBS_FILE
//
// To build it with .NET 6 or later: `dotnet new console -n RunJobsFile`, replace Program.cs by this file, `dotnet build`; the program
// must be a 64-bit one and find controller_c.dll with the DLLs beside it: in PATH, or copied to the program.

using System;
using System.IO;
using System.Runtime.InteropServices;

internal static class ControllerC
{
    public const int Ok = 0;
    public const int Timeout = 3;
    private const string Library = "controller_c";

    [DllImport(Library, EntryPoint = "controller_engine_open", CallingConvention = CallingConvention.Cdecl)]
    public static extern int Open([MarshalAs(UnmanagedType.LPUTF8Str)] string settingsFile, out IntPtr engine);

    [DllImport(Library, EntryPoint = "controller_engine_close", CallingConvention = CallingConvention.Cdecl)]
    public static extern int Close(IntPtr engine);

    [DllImport(Library, EntryPoint = "controller_engine_enqueue", CallingConvention = CallingConvention.Cdecl)]
    public static extern int Enqueue(IntPtr engine, [MarshalAs(UnmanagedType.LPUTF8Str)] string jobsFile, out IntPtr answer);

    [DllImport(Library, EntryPoint = "controller_engine_step", CallingConvention = CallingConvention.Cdecl)]
    public static extern int Step(IntPtr engine, out IntPtr changed);

    [DllImport(Library, EntryPoint = "controller_engine_wait", CallingConvention = CallingConvention.Cdecl)]
    public static extern int Wait(IntPtr engine, [MarshalAs(UnmanagedType.LPUTF8Str)] string jobs, int milliseconds, out IntPtr answer);

    [DllImport(Library, EntryPoint = "controller_c_last_error", CallingConvention = CallingConvention.Cdecl)]
    private static extern IntPtr LastErrorText();

    [DllImport(Library, EntryPoint = "controller_c_free", CallingConvention = CallingConvention.Cdecl)]
    private static extern void Free(IntPtr text);

    // Texts of the library are freed by the library, so they are no LPUTF8Str.
    public static string Take(IntPtr text)
    {
        string copy = Marshal.PtrToStringUTF8(text) ?? "";
        Free(text);
        return copy;
    }

    public static void Check(int result, params int[] accepted)
    {
        if (result != Ok && Array.IndexOf(accepted, result) < 0)
        {
            throw new InvalidOperationException(Marshal.PtrToStringUTF8(LastErrorText()));
        }
    }
}

internal static class Program
{
    private static int Main(string[] arguments)
    {
        if (arguments.Length != 2)
        {
            Console.Error.WriteLine("Usage: RunJobsFile SETTINGS_FILE JOBS_FILE");
            return 2;
        }
        ControllerC.Check(ControllerC.Open(arguments[0], out IntPtr engine));
        try
        {
            ControllerC.Check(ControllerC.Enqueue(engine, File.ReadAllText(arguments[1]), out IntPtr answer));
            Console.WriteLine(ControllerC.Take(answer));
            RunAll(engine);
        }
        finally
        {
            ControllerC.Close(engine);
        }
        return 0;
    }

    private static void RunAll(IntPtr engine)
    {
        int result = ControllerC.Timeout;
        while (result == ControllerC.Timeout)
        {
            result = ControllerC.Wait(engine, "all", 200, out IntPtr jobs);
            ControllerC.Take(jobs);
            ControllerC.Check(result, ControllerC.Timeout);
            ControllerC.Check(ControllerC.Step(engine, out IntPtr changed));
            Console.WriteLine(ControllerC.Take(changed));
        }
    }
}
