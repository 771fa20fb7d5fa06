// Copyright Orvane. All Rights Reserved.

#include "UObject/Field.h"

#include "UObject/Class.h"
#include "UObject/UnrealType.h"

FFieldClass::FFieldClass(const TCHAR* InCPPName, FFieldClass* InSuperClass)
	: Name(InCPPName)
	, SuperClass(InSuperClass)
{
}

FField::FField(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: Owner(InOwner)
	, NamePrivate(InName)
	, FlagsPrivate(InObjectFlags)
{
}

FField::~FField() = default;

FFieldClass* FField::StaticClass()
{
	static FFieldClass Class(TEXT("Field"), nullptr);
	return &Class;
}

UObject* FField::GetOwnerUObject() const
{
	FFieldVariant Current = Owner;
	while (Current.IsValid() && !Current.IsUObject())
	{
		Current = Current.ToField()->Owner;
	}
	return Current.ToUObject();
}

UStruct* FField::GetOwnerStruct() const
{
	UObject* Object = GetOwnerUObject();
	return Object && Object->IsA(UStruct::StaticClass()) ? (UStruct*)Object : nullptr;
}

UClass* FField::GetOwnerClass() const
{
	for (UObject* Object = GetOwnerUObject(); Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UClass::StaticClass()))
		{
			return (UClass*)Object;
		}
	}
	return nullptr;
}

FString FField::GetPathName(const UObject* StopOuter) const
{
	FString Result;
	if (Owner.IsUObject())
	{
		Result = Owner.ToUObject()->GetPathName(StopOuter);
		Result += TEXT(":");
	}
	else if (Owner.ToField())
	{
		Result = Owner.ToField()->GetPathName(StopOuter);
		Result += TEXT(".");
	}
	Result += GetName();
	return Result;
}

FString FField::GetFullName() const
{
	return GetClass()->GetName() + TEXT(" ") + GetPathName();
}

#if WITH_EDITORONLY_DATA
static const FString& EmptyMetaDataValue()
{
	static const FString Empty;
	return Empty;
}

const FString& FField::GetMetaData(const FName& Key) const
{
	const FString* Value = MetaDataMap.Find(Key);
	return Value ? *Value : EmptyMetaDataValue();
}

bool FField::HasMetaData(const FName& Key) const
{
	return MetaDataMap.Contains(Key);
}

void FField::SetMetaData(const FName& Key, FString&& InValue)
{
	MetaDataMap.Add(Key, MoveTemp(InValue));
}

void FField::RemoveMetaData(const FName& Key)
{
	MetaDataMap.Remove(Key);
}

bool FField::GetBoolMetaData(const FName& Key) const
{
	return GetMetaData(Key).ToBool();
}

int32 FField::GetIntMetaData(const FName& Key) const
{
	int32 Value = 0;
	LexFromString(Value, *GetMetaData(Key));
	return Value;
}

float FField::GetFloatMetaData(const FName& Key) const
{
	float Value = 0.0f;
	LexFromString(Value, *GetMetaData(Key));
	return Value;
}
#endif

namespace UE::CoreUObject::Private
{
	/** "bMyValue" -> "My Value": the editor's readable form of a name. */
	FString NameToDisplayString(const FString& InName, bool bIsBool)
	{
		FString Name = InName;
		if (bIsBool && Name.Len() > 1 && Name[0] == TEXT('b') && FChar::IsUpper(Name[1]))
		{
			Name.RightChopInline(1);
		}
		FString Result;
		for (int32 Index = 0; Index < Name.Len(); ++Index)
		{
			const TCHAR Char = Name[Index];
			if (Char == TEXT('_'))
			{
				Result += TEXT(' ');
				continue;
			}
			if (Index > 0 && !Result.IsEmpty() && Result[Result.Len() - 1] != TEXT(' '))
			{
				const TCHAR Previous = Name[Index - 1];
				const bool bUpperAfterLower =
					FChar::IsUpper(Char) && (FChar::IsLower(Previous) || FChar::IsDigit(Previous));
				const bool bUpperBeforeLower = FChar::IsUpper(Char) && FChar::IsUpper(Previous) &&
											   Index + 1 < Name.Len() && FChar::IsLower(Name[Index + 1]);
				const bool bDigitAfterLetter = FChar::IsDigit(Char) && FChar::IsAlpha(Previous);
				if (bUpperAfterLower || bUpperBeforeLower || bDigitAfterLetter)
				{
					Result += TEXT(' ');
				}
			}
			Result += Char;
		}
		if (!Result.IsEmpty())
		{
			Result[0] = FChar::ToUpper(Result[0]);
		}
		return Result;
	}
} // namespace UE::CoreUObject::Private

#if WITH_EDITOR
FText FField::GetDisplayNameText() const
{
	if (const FString* DisplayName = MetaDataMap.Find(TEXT("DisplayName")))
	{
		return FText::FromString(*DisplayName);
	}
	return FText::FromString(UE::CoreUObject::Private::NameToDisplayString(GetName(), IsA<FBoolProperty>()));
}

FText FField::GetToolTipText(bool bShortTooltip) const
{
	if (bShortTooltip)
	{
		if (const FString* Short = MetaDataMap.Find(TEXT("ShortTooltip")))
		{
			return FText::FromString(*Short);
		}
	}
	if (const FString* ToolTip = MetaDataMap.Find(TEXT("ToolTip")))
	{
		return FText::FromString(*ToolTip);
	}
	return GetDisplayNameText();
}
#endif
