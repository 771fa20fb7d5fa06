// Copyright Orvane. All Rights Reserved.

#include "LiveLinkPreset.h"

bool ULiveLinkPreset::ApplyToClient() const
{
	UE_HEADLESS_UNIMPLEMENTED();
	return false;
}

bool ULiveLinkPreset::AddToClient(const bool bRecreatePresets) const
{
	UE_HEADLESS_UNIMPLEMENTED();
	return false;
}

void ULiveLinkPreset::BuildFromClient()
{
	UE_HEADLESS_UNIMPLEMENTED();
}
