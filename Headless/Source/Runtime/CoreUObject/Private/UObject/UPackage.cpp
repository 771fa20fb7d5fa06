// Copyright Orvane. All Rights Reserved.

#include "UObject/Package.h"

UPackage::FOnPackageDirtyStateChanged UPackage::PackageDirtyStateChangedEvent;
UPackage::FOnPackageMarkedDirty UPackage::PackageMarkedDirtyEvent;

void UPackage::SetDirtyFlag(bool bIsDirty)
{
	if (this == GetTransientPackage())
	{
		return;
	}
	const bool bChanged = bDirty != bIsDirty;
	bDirty = bIsDirty;
	if (bChanged)
	{
		PackageDirtyStateChangedEvent.Broadcast(this);
	}
}

void UPackage::FullyLoad()
{
	// Packages in memory are always complete: the loader reads a package's objects in one go.
}
