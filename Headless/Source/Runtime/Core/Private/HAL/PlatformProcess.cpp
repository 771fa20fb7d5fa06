// Copyright Orvane. All Rights Reserved.

#include "HAL/PlatformProcess.h"

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"

#include <cctype>
#include <chrono>
#include <climits>
#include <pwd.h>
#include <sched.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace
{
	/** Facts about the process that do not change while it runs, read once. */
	struct FProcessFacts
	{
		FString ExecutablePath;
		FString BaseDir;
		FString ExecutableName;
		FString ExecutableNameNoExtension;
		FString ComputerName;
		FString UserName;
		FString UserNameAlphaNumeric;

		FProcessFacts()
		{
			char Buffer[PATH_MAX + 1] = {};
			const ssize_t Length = readlink("/proc/self/exe", Buffer, PATH_MAX);
			const std::string Path = Length > 0 ? std::string(Buffer, (size_t)Length) : std::string();
			const size_t LastSlash = Path.find_last_of('/');
			const std::string Folder =
				LastSlash == std::string::npos ? std::string("./") : Path.substr(0, LastSlash + 1);
			const std::string FileName = LastSlash == std::string::npos ? Path : Path.substr(LastSlash + 1);
			const size_t LastDot = FileName.find_last_of('.');

			ExecutablePath = UTF8_TO_TCHAR(Path.c_str());
			BaseDir = UTF8_TO_TCHAR(Folder.c_str());
			ExecutableName = UTF8_TO_TCHAR(FileName.c_str());
			ExecutableNameNoExtension = UTF8_TO_TCHAR(
				(LastDot == std::string::npos || LastDot == 0 ? FileName : FileName.substr(0, LastDot)).c_str());

			char Host[256] = {};
			if (gethostname(Host, sizeof(Host) - 1) != 0)
			{
				Host[0] = '\0';
			}
			ComputerName = UTF8_TO_TCHAR(Host);

			std::string User;
			if (const passwd* Entry = getpwuid(geteuid()))
			{
				User = Entry->pw_name;
			}
			else if (const char* Env = getenv("USER"))
			{
				User = Env;
			}
			UserName = UTF8_TO_TCHAR(User.c_str());
			std::string AlphaNumeric;
			for (const char Char : User)
			{
				if (std::isalnum((unsigned char)Char))
				{
					AlphaNumeric += Char;
				}
			}
			UserNameAlphaNumeric = UTF8_TO_TCHAR(AlphaNumeric.c_str());
		}

		static const FProcessFacts& Get()
		{
			static const FProcessFacts Facts;
			return Facts;
		}
	};
} // namespace

void FPlatformProcess::Sleep(float Seconds)
{
	SleepNoStats(Seconds);
}

void FPlatformProcess::SleepNoStats(float Seconds)
{
	if (Seconds <= 0.0f)
	{
		YieldThread();
		return;
	}
	std::this_thread::sleep_for(std::chrono::duration<double>(Seconds));
}

void FPlatformProcess::SleepInfinite()
{
	for (;;)
	{
		pause();
	}
}

void FPlatformProcess::YieldThread()
{
	sched_yield();
}

const TCHAR* FPlatformProcess::BaseDir()
{
	return *FProcessFacts::Get().BaseDir;
}

const TCHAR* FPlatformProcess::ExecutablePath()
{
	return *FProcessFacts::Get().ExecutablePath;
}

const TCHAR* FPlatformProcess::ExecutableName(bool bRemoveExtension)
{
	const FProcessFacts& Facts = FProcessFacts::Get();
	return bRemoveExtension ? *Facts.ExecutableNameNoExtension : *Facts.ExecutableName;
}

uint32 FPlatformProcess::GetCurrentProcessId()
{
	return (uint32)getpid();
}

const TCHAR* FPlatformProcess::ComputerName()
{
	return *FProcessFacts::Get().ComputerName;
}

const TCHAR* FPlatformProcess::UserName(bool bOnlyAlphaNumeric)
{
	const FProcessFacts& Facts = FProcessFacts::Get();
	return bOnlyAlphaNumeric ? *Facts.UserNameAlphaNumeric : *Facts.UserName;
}
