// Copyright Orvane. All Rights Reserved.

#include "ReplayCommand.h"

#include "Common/UdpSocketBuilder.h"
#include "Containers/StringConv.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTime.h"
#include "IPAddress.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "ProgramOutput.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>

namespace
{
	/** The largest UDP payload over IPv4. */
	constexpr int32 MaxDatagramBytes = 65507;

	constexpr std::string_view HeaderLine = "# orvane tracking recording 1";
	constexpr std::string_view HeaderPrefix = "# orvane tracking recording ";

	/** Longest sleep between checks for Ctrl-C, and how early to wake up before a datagram is due. */
	constexpr double MaxSleepSeconds = 0.05;
	constexpr double WakeEarlySeconds = 0.001;

	struct FReplayOptions
	{
		FString RecordingPath;
		FIPv4Endpoint Destination;
		bool bLoop = false;
		double Speed = 1.0;
	};

	struct FRecordedDatagram
	{
		/** Seconds since the start of the recording. */
		double Seconds = 0.0;
		TArray<uint8> Bytes;
		/** Line of the recording it came from, for messages. */
		int32 Line = 0;
	};

	struct FReplayTotals
	{
		int64 Datagrams = 0;
		int64 Bytes = 0;
		int32 Passes = 0;
		double FirstSentSeconds = 0.0;
		double LastSentSeconds = 0.0;
	};

	volatile std::sig_atomic_t GInterrupted = 0;

	extern "C" void OnReplayInterrupt(int)
	{
		GInterrupted = 1;
	}

	bool ParseSpeed(const FString& Text, double& OutSpeed)
	{
		const std::string Utf8(TCHAR_TO_UTF8(*Text));
		char* End = nullptr;
		const double Value = std::strtod(Utf8.c_str(), &End);
		if (Utf8.empty() || End != Utf8.c_str() + Utf8.size() || !std::isfinite(Value) || Value <= 0.0)
		{
			return false;
		}
		OutSpeed = Value;
		return true;
	}

	bool ParseOptions(const TArray<FString>& Args, FReplayOptions& OutOptions, FString& OutError)
	{
		TArray<FString> Positional;
		for (int32 Index = 0; Index < Args.Num(); ++Index)
		{
			const FString& Arg = Args[Index];
			if (Arg == TEXT("--loop"))
			{
				OutOptions.bLoop = true;
			}
			else if (Arg == TEXT("--speed"))
			{
				if (Index + 1 >= Args.Num())
				{
					OutError = TEXT("--speed needs a factor, for example --speed 2.");
					return false;
				}
				const FString& Factor = Args[++Index];
				if (!ParseSpeed(Factor, OutOptions.Speed))
				{
					OutError = FString::Printf(TEXT("--speed takes a number greater than 0, but got '%s'."), *Factor);
					return false;
				}
			}
			else if (Arg.StartsWith(TEXT("--")))
			{
				OutError = FString::Printf(TEXT("Unknown option '%s' for 'replay'."), *Arg);
				return false;
			}
			else
			{
				Positional.Add(Arg);
			}
		}
		if (Positional.Num() != 2)
		{
			OutError = TEXT(
				"'replay' takes a recording and an endpoint: orvane replay FILE A.B.C.D:PORT [--loop] [--speed X]");
			return false;
		}
		// Relative to where the program was started, as a user typing the command expects.
		OutOptions.RecordingPath = FPaths::ConvertRelativePathToFull(FPaths::LaunchDir(), Positional[0]);
		if (!FIPv4Endpoint::Parse(Positional[1], OutOptions.Destination))
		{
			OutError = FString::Printf(
				TEXT("'%s' is not an endpoint: expected A.B.C.D:PORT, for example 127.0.0.1:9001."), *Positional[1]);
			return false;
		}
		return true;
	}

	bool IsBlank(char Char)
	{
		return Char == ' ' || Char == '\t';
	}

	int32 HexValue(char Char)
	{
		if (Char >= '0' && Char <= '9')
		{
			return Char - '0';
		}
		if (Char >= 'a' && Char <= 'f')
		{
			return Char - 'a' + 10;
		}
		if (Char >= 'A' && Char <= 'F')
		{
			return Char - 'A' + 10;
		}
		return -1;
	}

	/** Reads "<digits>[.<digits>]"; OutError says what is wrong otherwise. */
	bool ParseSeconds(std::string_view Field, double& OutSeconds, FString& OutError)
	{
		size_t Index = 0;
		while (Index < Field.size() && Field[Index] >= '0' && Field[Index] <= '9')
		{
			++Index;
		}
		bool bValid = Index > 0;
		if (bValid && Index < Field.size() && Field[Index] == '.')
		{
			const size_t FractionStart = ++Index;
			while (Index < Field.size() && Field[Index] >= '0' && Field[Index] <= '9')
			{
				++Index;
			}
			bValid = Index > FractionStart;
		}
		if (!bValid || Index != Field.size())
		{
			OutError = FString::Printf(
				TEXT("'%s' is not a time in seconds (expected digits with an optional fraction, such as 0.020)"),
				UTF8_TO_TCHAR(std::string(Field).c_str()));
			return false;
		}
		OutSeconds = std::strtod(std::string(Field).c_str(), nullptr);
		return true;
	}

	bool ParseHexBytes(std::string_view Field, TArray<uint8>& OutBytes, FString& OutError)
	{
		if (Field.size() % 2 != 0)
		{
			OutError = FString::Printf(
				TEXT("the hex bytes have an odd number of digits (%d)"), static_cast<int32>(Field.size()));
			return false;
		}
		if (Field.size() / 2 > static_cast<size_t>(MaxDatagramBytes))
		{
			OutError = FString::Printf(TEXT("the datagram has %d bytes; a UDP datagram holds at most %d"),
				static_cast<int32>(Field.size() / 2), MaxDatagramBytes);
			return false;
		}
		OutBytes.Reset(static_cast<int32>(Field.size() / 2));
		for (size_t Index = 0; Index < Field.size(); Index += 2)
		{
			const int32 High = HexValue(Field[Index]);
			const int32 Low = HexValue(Field[Index + 1]);
			if (High < 0 || Low < 0)
			{
				const char Bad = High < 0 ? Field[Index] : Field[Index + 1];
				OutError = FString::Printf(TEXT("'%c' at column %d of the hex bytes is not a hexadecimal digit"),
					static_cast<TCHAR>(Bad), static_cast<int32>(High < 0 ? Index + 1 : Index + 2));
				return false;
			}
			OutBytes.Add(static_cast<uint8>((High << 4) | Low));
		}
		return true;
	}

	/** Splits a line into its blank-separated fields. */
	TArray<std::string_view> SplitFields(std::string_view Line)
	{
		TArray<std::string_view> Fields;
		size_t Index = 0;
		while (Index < Line.size())
		{
			while (Index < Line.size() && IsBlank(Line[Index]))
			{
				++Index;
			}
			const size_t Start = Index;
			while (Index < Line.size() && !IsBlank(Line[Index]))
			{
				++Index;
			}
			if (Index > Start)
			{
				Fields.Add(Line.substr(Start, Index - Start));
			}
		}
		return Fields;
	}

	/** Checks the first line; OutError says what was found instead. */
	bool CheckHeader(std::string_view Line, FString& OutError)
	{
		while (!Line.empty() && IsBlank(Line.back()))
		{
			Line.remove_suffix(1);
		}
		if (Line == HeaderLine)
		{
			return true;
		}
		if (Line.substr(0, HeaderPrefix.size()) == HeaderPrefix)
		{
			OutError =
				FString::Printf(TEXT("recording format version '%s' is not supported; this program reads version 1"),
					UTF8_TO_TCHAR(std::string(Line.substr(HeaderPrefix.size())).c_str()));
		}
		else
		{
			OutError = FString::Printf(TEXT("the first line is not the recording header '%s'"),
				UTF8_TO_TCHAR(std::string(HeaderLine).c_str()));
		}
		return false;
	}

	/** Reads a recording. On failure OutError names the file and, for a malformed line, its number. */
	bool LoadRecording(const FString& Path, TArray<FRecordedDatagram>& OutDatagrams, FString& OutError)
	{
		TArray<uint8> Contents;
		if (!FFileHelper::LoadFileToArray(Contents, *Path))
		{
			OutError = FString::Printf(TEXT("Could not read the recording '%s'."), *Path);
			return false;
		}

		const std::string_view Text(
			reinterpret_cast<const char*>(Contents.GetData()), static_cast<size_t>(Contents.Num()));
		size_t LineStart = 0;
		int32 LineNumber = 0;
		double PreviousSeconds = 0.0;
		while (LineStart < Text.size())
		{
			size_t LineEnd = Text.find('\n', LineStart);
			const size_t NextStart = LineEnd == std::string_view::npos ? Text.size() : LineEnd + 1;
			std::string_view Line =
				Text.substr(LineStart, (LineEnd == std::string_view::npos ? Text.size() : LineEnd) - LineStart);
			LineStart = NextStart;
			++LineNumber;
			if (!Line.empty() && Line.back() == '\r')
			{
				Line.remove_suffix(1);
			}

			FString LineError;
			if (LineNumber == 1)
			{
				if (!CheckHeader(Line, LineError))
				{
					OutError = FString::Printf(TEXT("%s:1: %s."), *Path, *LineError);
					return false;
				}
				continue;
			}

			const TArray<std::string_view> Fields = SplitFields(Line);
			if (Fields.Num() == 0 || Fields[0].front() == '#')
			{
				continue;
			}
			FRecordedDatagram Datagram;
			Datagram.Line = LineNumber;
			if (Fields.Num() != 2)
			{
				LineError = FString::Printf(TEXT("expected '<seconds> <hex bytes>' but found %d fields"), Fields.Num());
			}
			else if (ParseSeconds(Fields[0], Datagram.Seconds, LineError) &&
					 ParseHexBytes(Fields[1], Datagram.Bytes, LineError))
			{
				if (Datagram.Seconds < PreviousSeconds)
				{
					LineError = FString::Printf(
						TEXT("time %s s is earlier than the previous datagram's (%.6f s); times must not go back"),
						UTF8_TO_TCHAR(std::string(Fields[0]).c_str()), PreviousSeconds);
				}
			}
			if (!LineError.IsEmpty())
			{
				OutError = FString::Printf(TEXT("%s:%d: %s."), *Path, LineNumber, *LineError);
				return false;
			}
			PreviousSeconds = Datagram.Seconds;
			OutDatagrams.Add(MoveTemp(Datagram));
		}

		if (LineNumber == 0)
		{
			OutError = FString::Printf(TEXT("%s:1: the recording is empty; it must start with '%s'."), *Path,
				UTF8_TO_TCHAR(std::string(HeaderLine).c_str()));
			return false;
		}
		if (OutDatagrams.Num() == 0)
		{
			OutError = FString::Printf(TEXT("%s: the recording holds no datagrams."), *Path);
			return false;
		}
		return true;
	}

	/** Sleeps until the monotonic clock reaches DueSeconds. Returns false if Ctrl-C came first. */
	bool SleepUntil(double DueSeconds)
	{
		for (;;)
		{
			if (GInterrupted != 0)
			{
				return false;
			}
			const double Remaining = DueSeconds - FPlatformTime::Seconds();
			if (Remaining <= 0.0)
			{
				return true;
			}
			// Sleep most of the way, then yield for the last moment: the system's sleep can overshoot.
			if (Remaining > WakeEarlySeconds)
			{
				FPlatformProcess::Sleep(static_cast<float>(FMath::Min(Remaining - WakeEarlySeconds, MaxSleepSeconds)));
			}
			else
			{
				FPlatformProcess::YieldThread();
			}
		}
	}

	/** One closing line: what was sent, how long it took, the rate. */
	void PrintSummary(const FReplayOptions& Options, const FReplayTotals& Totals, bool bInterrupted)
	{
		const double Duration = Totals.Datagrams > 0 ? Totals.LastSentSeconds - Totals.FirstSentSeconds : 0.0;
		const double Rate = Duration > 0.0 ? static_cast<double>(Totals.Datagrams - 1) / Duration : 0.0;
		FString Line = FString::Printf(TEXT("Sent %lld datagrams (%lld bytes) to %s in %.3f s, %.1f datagrams/s"),
			static_cast<long long>(Totals.Datagrams), static_cast<long long>(Totals.Bytes),
			*Options.Destination.ToString(), Duration, Rate);
		if (Options.bLoop)
		{
			Line += FString::Printf(TEXT(", %d full passes"), Totals.Passes);
		}
		if (Options.Speed != 1.0)
		{
			Line += FString::Printf(TEXT(", speed %gx"), Options.Speed);
		}
		if (bInterrupted)
		{
			Line += TEXT(" (interrupted)");
		}
		ProgramOutput::Line(Line);
	}

	/** Restores the previous Ctrl-C handler when the replay ends. */
	class FInterruptHandlerScope
	{
	public:
		FInterruptHandlerScope()
		{
			GInterrupted = 0;
			Previous = std::signal(SIGINT, &OnReplayInterrupt);
		}
		~FInterruptHandlerScope() { std::signal(SIGINT, Previous); }
		FInterruptHandlerScope(const FInterruptHandlerScope&) = delete;
		FInterruptHandlerScope& operator=(const FInterruptHandlerScope&) = delete;

	private:
		void (*Previous)(int) = SIG_DFL;
	};
} // namespace

int32 RunReplayCommand(const TArray<FString>& Args)
{
	FReplayOptions Options;
	FString Error;
	if (!ParseOptions(Args, Options, Error))
	{
		ProgramOutput::Error(Error);
		return 2;
	}

	TArray<FRecordedDatagram> Datagrams;
	if (!LoadRecording(Options.RecordingPath, Datagrams, Error))
	{
		ProgramOutput::Error(Error);
		return 1;
	}

	// A pass lasts until the last datagram plus one average interval, so a looped recording keeps its rate.
	const double LastSeconds = Datagrams.Last().Seconds;
	const double PassSeconds = LastSeconds + LastSeconds / Datagrams.Num();
	if (Options.bLoop && PassSeconds <= 0.0)
	{
		ProgramOutput::Error(FString::Printf(
			TEXT("--loop needs a recording that lasts longer than 0 s; every datagram of '%s' is at 0 s."),
			*Options.RecordingPath));
		return 2;
	}

	FSocket* Socket = FUdpSocketBuilder(TEXT("orvane replay"))
						  .AsBlocking()
						  .WithBroadcast()
						  .WithMulticastLoopback()
						  .WithMulticastTtl(1)
						  .Build();
	if (Socket == nullptr)
	{
		ProgramOutput::Error(TEXT("Could not open a UDP socket to send from; the log above says why."));
		return 1;
	}
	ISocketSubsystem& Subsystem = *ISocketSubsystem::Get();
	const TSharedRef<FInternetAddr> Destination = Options.Destination.ToInternetAddr();

	FInterruptHandlerScope InterruptHandler;
	FReplayTotals Totals;
	bool bInterrupted = false;
	int32 ExitCode = 0;
	const double StartSeconds = FPlatformTime::Seconds();
	do
	{
		const double PassOffset = Totals.Passes * PassSeconds;
		for (const FRecordedDatagram& Datagram : Datagrams)
		{
			if (!SleepUntil(StartSeconds + (PassOffset + Datagram.Seconds) / Options.Speed))
			{
				bInterrupted = true;
				break;
			}
			int32 BytesSent = 0;
			if (!Socket->SendTo(Datagram.Bytes.GetData(), Datagram.Bytes.Num(), BytesSent, *Destination) ||
				BytesSent != Datagram.Bytes.Num())
			{
				ProgramOutput::Error(FString::Printf(TEXT("Sending the datagram of %s:%d (%d bytes) to %s failed: %s"),
					*Options.RecordingPath, Datagram.Line, Datagram.Bytes.Num(), *Options.Destination.ToString(),
					Subsystem.GetSocketError(Subsystem.GetLastErrorCode())));
				ExitCode = 1;
				break;
			}
			const double Now = FPlatformTime::Seconds();
			if (Totals.Datagrams == 0)
			{
				Totals.FirstSentSeconds = Now;
			}
			Totals.LastSentSeconds = Now;
			++Totals.Datagrams;
			Totals.Bytes += BytesSent;
		}
		if (!bInterrupted && ExitCode == 0)
		{
			++Totals.Passes;
		}
	} while (Options.bLoop && !bInterrupted && ExitCode == 0);

	Subsystem.DestroySocket(Socket);
	PrintSummary(Options, Totals, bInterrupted);
	if (bInterrupted && !Options.bLoop)
	{
		return 130;
	}
	return ExitCode;
}
