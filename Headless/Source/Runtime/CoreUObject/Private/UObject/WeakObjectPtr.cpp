// Copyright Orvane. All Rights Reserved.

#include "UObject/WeakObjectPtr.h"

#include "ObjectInternals.h"

using namespace UE::CoreUObject::Private;

void FWeakObjectPtr::operator=(const UObject* Object)
{
	if (Object)
	{
		ObjectIndex = (int32)Object->GetUniqueID();
		FUObjectItem* Item = GetObjectArray().GetItem(ObjectIndex);
		ObjectSerialNumber = Item ? Item->SerialNumber : 0;
	}
	else
	{
		Reset();
	}
}

UObject* FWeakObjectPtr::Resolve(bool bEvenIfGarbage, bool bEvenIfUnreachable) const
{
	if (ObjectIndex == INDEX_NONE)
	{
		return nullptr;
	}
	FUObjectItem* Item = GetObjectArray().GetItem(ObjectIndex);
	if (!Item || !Item->Object || Item->SerialNumber != ObjectSerialNumber)
	{
		return nullptr;
	}
	if (!bEvenIfUnreachable && EnumHasAnyFlags(Item->Flags, EInternalObjectFlags::Unreachable))
	{
		return nullptr;
	}
	if (!bEvenIfGarbage && EnumHasAnyFlags(Item->Flags, EInternalObjectFlags::Garbage))
	{
		return nullptr;
	}
	return (UObject*)Item->Object;
}

UObject* FWeakObjectPtr::Get() const
{
	return Resolve(false, false);
}

UObject* FWeakObjectPtr::Get(bool bEvenIfGarbage) const
{
	return Resolve(bEvenIfGarbage, false);
}

UObject* FWeakObjectPtr::GetEvenIfUnreachable() const
{
	return Resolve(true, true);
}

bool FWeakObjectPtr::IsValid(bool bEvenIfGarbage, bool bThreadsafeTest) const
{
	return Resolve(bEvenIfGarbage, false) != nullptr;
}

bool FWeakObjectPtr::IsStale(bool bIncludingGarbage, bool bThreadsafeTest) const
{
	if (ObjectIndex == INDEX_NONE)
	{
		return false;
	}
	return Resolve(!bIncludingGarbage, false) == nullptr;
}
