// Copyright Orvane. All Rights Reserved.

#include "UObject/UObjectBaseUtility.h"

#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/Package.h"

using namespace UE::CoreUObject::Private;

bool GIsEditorLoadingPackage = false;

void UObjectBaseUtility::SetInternalFlags(EInternalObjectFlags FlagsToSet) const
{
	if (FUObjectItem* Item = GetObjectArray().GetItem(this))
	{
		Item->Flags |= FlagsToSet;
	}
}

void UObjectBaseUtility::ClearInternalFlags(EInternalObjectFlags FlagsToClear) const
{
	if (FUObjectItem* Item = GetObjectArray().GetItem(this))
	{
		Item->Flags &= ~FlagsToClear;
	}
}

EInternalObjectFlags UObjectBaseUtility::GetInternalFlags() const
{
	FUObjectItem* Item = GetObjectArray().GetItem(this);
	return Item ? Item->Flags : EInternalObjectFlags::None;
}

bool UObjectBaseUtility::HasAnyInternalFlags(EInternalObjectFlags FlagsToCheck) const
{
	return EnumHasAnyFlags(GetInternalFlags(), FlagsToCheck);
}

void UObjectBaseUtility::AddToRoot()
{
	SetInternalFlags(EInternalObjectFlags::RootSet);
}

void UObjectBaseUtility::RemoveFromRoot()
{
	ClearInternalFlags(EInternalObjectFlags::RootSet);
}

bool UObjectBaseUtility::IsRooted() const
{
	return HasAnyInternalFlags(EInternalObjectFlags::RootSet);
}

void UObjectBaseUtility::MarkAsGarbage()
{
	if (IsRooted())
	{
		UE_LOG(LogGarbage, Warning, TEXT("MarkAsGarbage called on %s, which is in the root set; it stays alive."),
			*GetFullName());
	}
	SetInternalFlags(EInternalObjectFlags::Garbage);
	AtomicallySetFlags(RF_MirroredGarbage);
}

void UObjectBaseUtility::ClearGarbage()
{
	ClearInternalFlags(EInternalObjectFlags::Garbage);
	AtomicallyClearFlags(RF_MirroredGarbage);
}

bool UObjectBaseUtility::IsUnreachable() const
{
	return HasAnyInternalFlags(EInternalObjectFlags::Unreachable);
}

bool UObjectBaseUtility::IsTemplate(EObjectFlags TemplateTypes) const
{
	for (const UObjectBase* Outer = this; Outer; Outer = Outer->GetOuter())
	{
		if (Outer->GetFlags() & TemplateTypes)
		{
			return true;
		}
	}
	return false;
}

FString UObjectBaseUtility::GetPathName(const UObject* StopOuter) const
{
	FString Result;
	GetPathName(StopOuter, Result);
	return Result;
}

void UObjectBaseUtility::GetPathName(const UObject* StopOuter, FString& ResultString) const
{
	if ((const UObjectBase*)this == (const UObjectBase*)StopOuter)
	{
		ResultString += TEXT("None");
		return;
	}
	const UObject* Outer = GetOuter();
	if (Outer && Outer != StopOuter)
	{
		Outer->GetPathName(StopOuter, ResultString);
		// ':' separates the first subobject below an object that lives directly in a package.
		const UObject* OuterOuter = Outer->GetOuter();
		if (Outer->GetClass() != UPackage::StaticClass() && OuterOuter &&
			OuterOuter->GetClass() == UPackage::StaticClass())
		{
			ResultString += TEXT(":");
		}
		else
		{
			ResultString += TEXT(".");
		}
	}
	GetFName().AppendString(ResultString);
}

FString UObjectBaseUtility::GetFullName(const UObject* StopOuter, EObjectFullNameFlags Flags) const
{
	FString Result;
	if (EnumHasAnyFlags(Flags, EObjectFullNameFlags::IncludeClassPackage))
	{
		Result = GetClass()->GetPathName();
	}
	else
	{
		Result = GetClass()->GetName();
	}
	Result += TEXT(" ");
	GetPathName(StopOuter, Result);
	return Result;
}

UObject* UObjectBaseUtility::GetOutermostObject() const
{
	const UObjectBase* Top = this;
	while (Top->GetOuter())
	{
		Top = Top->GetOuter();
	}
	return (UObject*)static_cast<const UObject*>(static_cast<const UObjectBaseUtility*>(Top));
}

UPackage* UObjectBaseUtility::GetPackage() const
{
	UObject* Top = GetOutermostObject();
	return Top && Top->IsA(UPackage::StaticClass()) ? (UPackage*)Top : nullptr;
}

UPackage* UObjectBaseUtility::GetOutermost() const
{
	return GetPackage();
}

bool UObjectBaseUtility::MarkPackageDirty() const
{
	UPackage* Package = GetPackage();
	if (!Package)
	{
		return false;
	}
	if (Package == GetTransientPackage() || Package->HasAnyPackageFlags(PKG_CompiledIn))
	{
		return true;
	}
	if (GIsEditorLoadingPackage)
	{
		return false;
	}
	const bool bWasDirty = Package->IsDirty();
	Package->SetDirtyFlag(true);
	UPackage::PackageMarkedDirtyEvent.Broadcast(Package, bWasDirty);
	return true;
}

bool UObjectBaseUtility::IsIn(const UObject* SomeOuter) const
{
	if (SomeOuter && SomeOuter->IsA(UPackage::StaticClass()))
	{
		return IsInPackage((const UPackage*)SomeOuter);
	}
	return IsInOuter(SomeOuter);
}

bool UObjectBaseUtility::IsInOuter(const UObject* SomeOuter) const
{
	for (const UObject* It = GetOuter(); It; It = It->GetOuter())
	{
		if (It == SomeOuter)
		{
			return true;
		}
	}
	return SomeOuter == nullptr;
}

bool UObjectBaseUtility::IsInPackage(const UPackage* SomePackage) const
{
	return (const UObjectBase*)this != (const UObjectBase*)SomePackage && GetPackage() == SomePackage;
}

UObject* UObjectBaseUtility::GetTypedOuter(UClass* Target) const
{
	for (UObject* It = GetOuter(); It; It = It->GetOuter())
	{
		if (It->IsA(Target))
		{
			return It;
		}
	}
	return nullptr;
}

bool UObjectBaseUtility::IsDefaultSubobject() const
{
	return HasAnyFlags(RF_DefaultSubObject);
}

bool UObjectBaseUtility::IsNative() const
{
	return GetClass() && GetClass()->HasAnyClassFlags(CLASS_Native);
}

bool UObjectBaseUtility::IsAClass(const UClass* SomeBase) const
{
	checkf(SomeBase, TEXT("IsA(nullptr) is not allowed"));
	const UClass* Class = GetClass();
	return Class && Class->IsChildOf(SomeBase);
}

FString GetNameSafe(const UObjectBaseUtility* Object)
{
	return Object ? Object->GetName() : FString(TEXT("None"));
}

FString GetPathNameSafe(const UObjectBaseUtility* Object)
{
	return Object ? Object->GetPathName() : FString(TEXT("None"));
}

FString GetFullNameSafe(const UObjectBaseUtility* Object)
{
	return Object ? Object->GetFullName() : FString(TEXT("None"));
}
