// Copyright Orvane. All Rights Reserved.

#include "DescriptorJson.h"

#include "Containers/StringConv.h"
#include "Misc/FileHelper.h"

namespace DescriptorJson
{
	static FString ToFString(const std::string& Utf8)
	{
		return FString(UTF8_TO_TCHAR(Utf8.c_str()));
	}

	bool ParseObject(const FString& Text, nlohmann::json& OutObject, FText& OutFailReason)
	{
		nlohmann::json Parsed = nlohmann::json::parse(TCHAR_TO_UTF8(*Text), nullptr, false);
		if (Parsed.is_discarded())
		{
			OutFailReason = FText::FromString(TEXT("The descriptor is not valid JSON."));
			return false;
		}
		if (!Parsed.is_object())
		{
			OutFailReason = FText::FromString(TEXT("The descriptor's top level is not a JSON object."));
			return false;
		}
		OutObject = MoveTemp(Parsed);
		return true;
	}

	FString GetString(const nlohmann::json& Object, const char* Field, const FString& Default)
	{
		const auto Found = Object.find(Field);
		return Found != Object.end() && Found->is_string() ? ToFString(Found->get<std::string>()) : Default;
	}

	int32 GetInt(const nlohmann::json& Object, const char* Field, int32 Default)
	{
		const auto Found = Object.find(Field);
		return Found != Object.end() && Found->is_number_integer() ? Found->get<int32>() : Default;
	}

	bool GetBool(const nlohmann::json& Object, const char* Field, bool bDefault)
	{
		const auto Found = Object.find(Field);
		return Found != Object.end() && Found->is_boolean() ? Found->get<bool>() : bDefault;
	}

	TArray<FString> GetStringArray(const nlohmann::json& Object, const char* Field)
	{
		TArray<FString> Result;
		const auto Found = Object.find(Field);
		if (Found != Object.end() && Found->is_array())
		{
			for (const nlohmann::json& Item : *Found)
			{
				if (Item.is_string())
				{
					Result.Add(ToFString(Item.get<std::string>()));
				}
			}
		}
		return Result;
	}

	static bool ReadModule(const nlohmann::json& Entry, int32 Index, FModuleDescriptor& OutModule, FText& OutFailReason)
	{
		const FString Name = GetString(Entry, "Name");
		if (Name.IsEmpty())
		{
			OutFailReason = FText::FromString(FString::Printf(TEXT("Module entry %d has no \"Name\"."), Index));
			return false;
		}
		const FString TypeText = GetString(Entry, "Type", TEXT("Runtime"));
		const EHostType::Type Type = EHostType::FromString(*TypeText);
		if (Type == EHostType::Max)
		{
			OutFailReason =
				FText::FromString(FString::Printf(TEXT("Module '%s' has an unknown type '%s'."), *Name, *TypeText));
			return false;
		}
		const FString PhaseText = GetString(Entry, "LoadingPhase", TEXT("Default"));
		const ELoadingPhase::Type Phase = ELoadingPhase::FromString(*PhaseText);
		if (Phase == ELoadingPhase::Max)
		{
			OutFailReason = FText::FromString(
				FString::Printf(TEXT("Module '%s' has an unknown loading phase '%s'."), *Name, *PhaseText));
			return false;
		}
		OutModule.Name = FName(*Name);
		OutModule.Type = Type;
		OutModule.LoadingPhase = Phase;
		OutModule.PlatformAllowList = GetStringArray(Entry, "PlatformAllowList");
		return true;
	}

	bool ReadModules(const nlohmann::json& Object, TArray<FModuleDescriptor>& OutModules, FText& OutFailReason)
	{
		const auto Found = Object.find("Modules");
		if (Found == Object.end())
		{
			return true;
		}
		if (!Found->is_array())
		{
			OutFailReason = FText::FromString(TEXT("\"Modules\" is not a list."));
			return false;
		}
		int32 Index = 0;
		for (const nlohmann::json& Entry : *Found)
		{
			FModuleDescriptor Module;
			if (!Entry.is_object() || !ReadModule(Entry, Index, Module, OutFailReason))
			{
				if (!Entry.is_object())
				{
					OutFailReason =
						FText::FromString(FString::Printf(TEXT("Module entry %d is not an object."), Index));
				}
				return false;
			}
			OutModules.Add(MoveTemp(Module));
			++Index;
		}
		return true;
	}

	bool ReadPluginReferences(
		const nlohmann::json& Object, TArray<FPluginReferenceDescriptor>& OutPlugins, FText& OutFailReason)
	{
		const auto Found = Object.find("Plugins");
		if (Found == Object.end())
		{
			return true;
		}
		if (!Found->is_array())
		{
			OutFailReason = FText::FromString(TEXT("\"Plugins\" is not a list."));
			return false;
		}
		for (const nlohmann::json& Entry : *Found)
		{
			FPluginReferenceDescriptor Reference;
			Reference.Name = Entry.is_object() ? GetString(Entry, "Name") : FString();
			if (Reference.Name.IsEmpty())
			{
				OutFailReason = FText::FromString(TEXT("A plug-in reference has no \"Name\"."));
				return false;
			}
			Reference.bEnabled = GetBool(Entry, "Enabled", true);
			Reference.bOptional = GetBool(Entry, "Optional", false);
			OutPlugins.Add(MoveTemp(Reference));
		}
		return true;
	}

	bool LoadFile(const FString& FileName, FString& OutText, FText& OutFailReason)
	{
		if (!FFileHelper::LoadFileToString(OutText, *FileName))
		{
			OutFailReason = FText::FromString(FString::Printf(TEXT("Could not read '%s'."), *FileName));
			return false;
		}
		return true;
	}
} // namespace DescriptorJson
