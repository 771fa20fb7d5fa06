// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "Logging/LogVerbosity.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace JsonTestUtils
{
	/** Records the errors and warnings logged while it is alive. */
	class FLogCapture : public FOutputDevice
	{
	public:
		FLogCapture() { GLog->AddOutputDevice(this); }
		~FLogCapture() { GLog->RemoveOutputDevice(this); }

		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (Verbosity == ELogVerbosity::Error)
			{
				Errors.Add(FString(V));
			}
			else if (Verbosity == ELogVerbosity::Warning)
			{
				Warnings.Add(FString(V));
			}
		}

		bool HasError(const TCHAR* Text) const
		{
			for (const FString& Line : Errors)
			{
				if (Line.Contains(Text, ESearchCase::CaseSensitive))
				{
					return true;
				}
			}
			return false;
		}

		TArray<FString> Errors;
		TArray<FString> Warnings;
	};

	/** A file of the Data folder next to this header, as raw bytes. */
	inline std::string ReadDataFile(const char* Name)
	{
		const std::filesystem::path Path = std::filesystem::path(__FILE__).parent_path() / "Data" / Name;
		std::ifstream Stream(Path, std::ios::binary);
		return std::string(std::istreambuf_iterator<char>(Stream), std::istreambuf_iterator<char>());
	}

	inline std::string ToUtf8(const FString& Text)
	{
		const FTCHARToUTF8 Converted(*Text);
		return std::string(reinterpret_cast<const char*>(Converted.Get()), static_cast<size_t>(Converted.Length()));
	}
} // namespace JsonTestUtils
