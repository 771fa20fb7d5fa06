// Copyright Orvane. All Rights Reserved.

#include "UObject/SoftObjectPath.h"

#include "Logging/LogMacros.h"
#include "Misc/Char.h"
#include "Misc/OutputDevice.h"
#include "Misc/PackageName.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/ObjectPathParsing.h"
#include "UObject/PropertyPortFlags.h"
#include "UObject/SoftObjectPtr.h"
#include "UObject/TopLevelAssetPath.h"
#include "UObject/UObjectGlobals.h"

DEFINE_LOG_CATEGORY_STATIC(LogSoftObjectPath, Log, All);

namespace UE::ObjectPath::Private
{
	namespace
	{
		/** Removes the export text wrapper "Class'...'" and surrounding double quotes. */
		FString StripPathDecorations(FStringView InPath)
		{
			FString Path = FString(InPath).TrimStartAndEnd();
			if (Path.Len() >= 2 && Path.StartsWith(TEXT("\"")) && Path.EndsWith(TEXT("\"")))
			{
				Path = Path.Mid(1, Path.Len() - 2);
			}
			FString Unwrapped;
			if (FPackageName::ParseExportTextPath(Path, nullptr, &Unwrapped))
			{
				Path = Unwrapped;
			}
			else if (Path.Len() >= 2 && Path.StartsWith(TEXT("'")) && Path.EndsWith(TEXT("'")))
			{
				Path = Path.Mid(1, Path.Len() - 2);
			}
			return Path;
		}

		/** The index of the first '.' or ':' at or after Start, or INDEX_NONE. */
		int32 FindDelimiter(const FString& Path, int32 Start)
		{
			for (int32 Index = Start; Index < Path.Len(); ++Index)
			{
				if (Path[Index] == TEXT('.') || Path[Index] == TEXT(':'))
				{
					return Index;
				}
			}
			return INDEX_NONE;
		}
	} // namespace

	bool ParseObjectPath(FStringView InPath, FParsedObjectPath& OutParts)
	{
		OutParts = FParsedObjectPath();
		const FString Path = StripPathDecorations(InPath);
		if (Path.IsEmpty() || Path.Equals(TEXT("None"), ESearchCase::CaseSensitive))
		{
			return true;
		}
		if (!Path.StartsWith(TEXT("/")) || Path.Len() < 2)
		{
			return false;
		}

		const int32 PackageEnd = FindDelimiter(Path, 0);
		const FString PackageName = PackageEnd == INDEX_NONE ? Path : Path.Left(PackageEnd);
		if (PackageName.EndsWith(TEXT("/")) || PackageName.Contains(TEXT("//")))
		{
			return false;
		}
		if (PackageEnd == INDEX_NONE)
		{
			OutParts.PackageName = PackageName;
			return true;
		}
		// The asset follows the package after a '.'; a ':' straight after the package has no asset to belong to.
		if (Path[PackageEnd] != TEXT('.'))
		{
			return false;
		}

		const int32 AssetEnd = FindDelimiter(Path, PackageEnd + 1);
		const FString AssetName = AssetEnd == INDEX_NONE ? Path.RightChop(PackageEnd + 1)
														 : Path.Mid(PackageEnd + 1, AssetEnd - PackageEnd - 1);
		const FString SubPath = AssetEnd == INDEX_NONE ? FString() : Path.RightChop(AssetEnd + 1);
		if (AssetName.IsEmpty() || AssetName.Contains(TEXT("/")) || SubPath.Contains(TEXT("/")) ||
			(AssetEnd != INDEX_NONE && SubPath.IsEmpty()))
		{
			return false;
		}
		OutParts.PackageName = PackageName;
		OutParts.AssetName = AssetName;
		OutParts.SubPath = SubPath;
		return true;
	}

	bool ReadPathToken(const TCHAR*& Buffer, FString& OutToken)
	{
		OutToken.Reset();
		const TCHAR* Cursor = Buffer;
		while (*Cursor == TEXT(' ') || *Cursor == TEXT('\t'))
		{
			++Cursor;
		}
		if (*Cursor == TEXT('"'))
		{
			++Cursor;
			while (*Cursor && *Cursor != TEXT('"'))
			{
				if (*Cursor == TEXT('\\') && (Cursor[1] == TEXT('"') || Cursor[1] == TEXT('\\')))
				{
					++Cursor;
				}
				OutToken.AppendChar(*Cursor++);
			}
			if (*Cursor != TEXT('"'))
			{
				return false;
			}
			Buffer = Cursor + 1;
			return true;
		}
		// An unquoted export text path may contain a quoted part: "Class'/Game/A.A'".
		bool bInSingleQuotes = false;
		while (*Cursor)
		{
			const TCHAR Char = *Cursor;
			if (Char == TEXT('\''))
			{
				bInSingleQuotes = !bInSingleQuotes;
			}
			else if (!bInSingleQuotes && (Char == TEXT(',') || Char == TEXT(')') || FChar::IsWhitespace(Char)))
			{
				break;
			}
			OutToken.AppendChar(Char);
			++Cursor;
		}
		Buffer = Cursor;
		return !bInSingleQuotes;
	}

	void WritePathToken(FString& ValueStr, const FString& Path, bool bDelimited)
	{
		if (Path.IsEmpty())
		{
			ValueStr += TEXT("None");
			return;
		}
		if (!bDelimited)
		{
			ValueStr += Path;
			return;
		}
		ValueStr.AppendChar(TEXT('"'));
		for (const TCHAR Char : Path)
		{
			if (Char == TEXT('"') || Char == TEXT('\\'))
			{
				ValueStr.AppendChar(TEXT('\\'));
			}
			ValueStr.AppendChar(Char);
		}
		ValueStr.AppendChar(TEXT('"'));
	}
} // namespace UE::ObjectPath::Private

using namespace UE::ObjectPath::Private;

// FTopLevelAssetPath

bool FTopLevelAssetPath::TrySetPath(FName InPackageName, FName InAssetName)
{
	if (InPackageName.IsNone())
	{
		Reset();
		return false;
	}
	PackageName = InPackageName;
	AssetName = InAssetName;
	return true;
}

bool FTopLevelAssetPath::TrySetPath(FWideStringView Path)
{
	FParsedObjectPath Parts;
	if (!ParseObjectPath(Path, Parts) || Parts.PackageName.IsEmpty() || !Parts.SubPath.IsEmpty())
	{
		Reset();
		return false;
	}
	PackageName = FName(*Parts.PackageName);
	AssetName = Parts.AssetName.IsEmpty() ? FName() : FName(*Parts.AssetName);
	return true;
}

bool FTopLevelAssetPath::TrySetPath(FAnsiStringView Path)
{
	const FString Wide(Path);
	return TrySetPath(FWideStringView(Wide));
}

FString FTopLevelAssetPath::ToString() const
{
	FString Result;
	AppendString(Result);
	return Result;
}

void FTopLevelAssetPath::ToString(FString& OutString) const
{
	OutString.Reset();
	AppendString(OutString);
}

void FTopLevelAssetPath::AppendString(FString& OutString) const
{
	if (IsNull())
	{
		return;
	}
	OutString += PackageName.ToString();
	if (!AssetName.IsNone())
	{
		OutString.AppendChar(TEXT('.'));
		OutString += AssetName.ToString();
	}
}

FName FTopLevelAssetPath::ToFName() const
{
	return IsNull() ? FName() : FName(*ToString());
}

bool FTopLevelAssetPath::ExportTextItem(FString& ValueStr, FTopLevelAssetPath const& DefaultValue, UObject* Parent,
	int32 PortFlags, UObject* ExportRootScope) const
{
	WritePathToken(ValueStr, ToString(), (PortFlags & PPF_Delimited) != 0);
	return true;
}

bool FTopLevelAssetPath::ImportTextItem(
	const TCHAR*& Buffer, int32 PortFlags, UObject* Parent, FOutputDevice* ErrorText, FArchive* InSerializingArchive)
{
	const TCHAR* Cursor = Buffer;
	FString Token;
	if (!ReadPathToken(Cursor, Token))
	{
		if (ErrorText)
		{
			ErrorText->Logf(ELogVerbosity::Warning, TEXT("Unterminated asset path in '%s'."), Buffer);
		}
		return false;
	}
	FTopLevelAssetPath Parsed;
	if (!Token.IsEmpty() && Token != TEXT("None") && !Parsed.TrySetPath(Token))
	{
		if (ErrorText)
		{
			ErrorText->Logf(ELogVerbosity::Warning, TEXT("'%s' is not a top-level asset path."), *Token);
		}
		return false;
	}
	*this = Parsed;
	Buffer = Cursor;
	return true;
}

int32 FTopLevelAssetPath::Compare(const FTopLevelAssetPath& Other) const
{
	return ToString().Compare(Other.ToString(), ESearchCase::IgnoreCase);
}

// FSoftObjectPath

void FSoftObjectPath::SetPath(const FTopLevelAssetPath& InAssetPath)
{
	AssetPath = InAssetPath;
	SubPathString.Reset();
}

void FSoftObjectPath::SetPath(const FTopLevelAssetPath& InAssetPath, FString InSubPathString)
{
	AssetPath = InAssetPath;
	// A sub-object belongs to an asset: without an asset name the sub-path has nothing to hang from.
	SubPathString = AssetPath.GetAssetName().IsNone() ? FString() : MoveTemp(InSubPathString);
}

void FSoftObjectPath::SetPath(FWideStringView Path)
{
	FParsedObjectPath Parts;
	if (!ParseObjectPath(Path, Parts))
	{
		UE_LOG(LogSoftObjectPath, Warning, TEXT("'%s' is not a valid object path; the soft object path is cleared."),
			*FString(Path));
		Reset();
		return;
	}
	if (Parts.PackageName.IsEmpty())
	{
		Reset();
		return;
	}
	AssetPath =
		FTopLevelAssetPath(FName(*Parts.PackageName), Parts.AssetName.IsEmpty() ? FName() : FName(*Parts.AssetName));
	SubPathString = Parts.SubPath;
}

void FSoftObjectPath::SetPath(FAnsiStringView Path)
{
	const FString Wide(Path);
	SetPath(FWideStringView(Wide));
}

FString FSoftObjectPath::ToString() const
{
	FString Result;
	AppendString(Result);
	return Result;
}

void FSoftObjectPath::ToString(FString& OutString) const
{
	OutString.Reset();
	AppendString(OutString);
}

void FSoftObjectPath::AppendString(FString& OutString) const
{
	if (IsNull())
	{
		return;
	}
	AssetPath.AppendString(OutString);
	if (!SubPathString.IsEmpty())
	{
		OutString.AppendChar(TEXT(':'));
		OutString += SubPathString;
	}
}

FString FSoftObjectPath::GetLongPackageName() const
{
	return IsNull() ? FString() : AssetPath.GetPackageName().ToString();
}

FString FSoftObjectPath::GetAssetName() const
{
	return AssetPath.GetAssetName().IsNone() ? FString() : AssetPath.GetAssetName().ToString();
}

bool FSoftObjectPath::ExportTextItem(FString& ValueStr, FSoftObjectPath const& DefaultValue, UObject* Parent,
	int32 PortFlags, UObject* ExportRootScope) const
{
	WritePathToken(ValueStr, ToString(), (PortFlags & PPF_Delimited) != 0);
	return true;
}

bool FSoftObjectPath::ImportTextItem(
	const TCHAR*& Buffer, int32 PortFlags, UObject* Parent, FOutputDevice* ErrorText, FArchive* InSerializingArchive)
{
	const TCHAR* Cursor = Buffer;
	FString Token;
	FParsedObjectPath Parts;
	if (!ReadPathToken(Cursor, Token) || !ParseObjectPath(Token, Parts))
	{
		if (ErrorText)
		{
			ErrorText->Logf(ELogVerbosity::Warning, TEXT("'%s' is not an object path."), *Token);
		}
		return false;
	}
	SetPath(FWideStringView(Token));
	Buffer = Cursor;
	return true;
}

// Parts that look objects up.

bool FTopLevelAssetPath::TrySetPath(const UObject* InObject)
{
	if (!InObject)
	{
		Reset();
		return false;
	}
	const UObject* Outer = InObject->GetOuter();
	if (!Outer)
	{
		return TrySetPath(InObject->GetFName(), FName());
	}
	if (Outer->GetOuter() != nullptr)
	{
		Reset();
		return false;
	}
	return TrySetPath(Outer->GetFName(), InObject->GetFName());
}

FSoftObjectPath::FSoftObjectPath(const UObject* InObject)
{
	if (InObject)
	{
		SetPath(FWideStringView(InObject->GetPathName()));
	}
}

UObject* FSoftObjectPath::ResolveObject() const
{
	if (IsNull())
	{
		return nullptr;
	}
	UObject* Object = StaticFindObject(UObject::StaticClass(), nullptr, *ToString());
	return ::IsValid(Object) ? Object : nullptr;
}

UObject* FSoftObjectPath::TryLoad(FUObjectSerializeContext* InLoadContext) const
{
	if (IsNull())
	{
		return nullptr;
	}
	if (UObject* Loaded = ResolveObject())
	{
		return Loaded;
	}
	return StaticLoadObject(UObject::StaticClass(), nullptr, *ToString());
}

FSoftClassPath::FSoftClassPath(const UClass* InClass)
	: FSoftObjectPath(static_cast<const UObject*>(InClass))
{
}

UClass* FSoftClassPath::ResolveClass() const
{
	return UE::SoftObjectPtr::Private::CastToSubclassOf(ResolveObject(), UObject::StaticClass());
}

UClass* FSoftClassPath::TryLoadClassOf(UClass* BaseClass) const
{
	if (IsNull())
	{
		return nullptr;
	}
	return StaticLoadClass(BaseClass, nullptr, *ToString());
}

FSoftClassPath FSoftClassPath::GetOrCreateIDForClass(const UClass* InClass)
{
	return FSoftClassPath(InClass);
}

UObject* FSoftObjectPtr::Get() const
{
	return ObjectPathPrivate.ResolveObject();
}

UObject* FSoftObjectPtr::LoadSynchronous() const
{
	return ObjectPathPrivate.TryLoad();
}

namespace UE::SoftObjectPtr::Private
{
	UObject* CastToClass(UObject* Object, const UClass* Class)
	{
		return Object && Object->IsA(Class) ? Object : nullptr;
	}

	UClass* CastToSubclassOf(UObject* Object, const UClass* BaseClass)
	{
		if (!Object || !Object->IsA(UClass::StaticClass()))
		{
			return nullptr;
		}
		UClass* Class = static_cast<UClass*>(Object);
		return Class->IsChildOf(BaseClass) ? Class : nullptr;
	}
} // namespace UE::SoftObjectPtr::Private
