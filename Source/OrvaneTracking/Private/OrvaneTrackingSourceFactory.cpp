// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingSourceFactory.h"

#include "OrvaneTrackingEndpoint.h"
#include "OrvaneTrackingLog.h"
#include "OrvaneTrackingSource.h"

#define LOCTEXT_NAMESPACE "OrvaneTrackingSourceFactory"

FText UOrvaneTrackingSourceFactory::GetSourceDisplayName() const
{
	return LOCTEXT("DisplayName", "Orvane Tracking");
}

FText UOrvaneTrackingSourceFactory::GetSourceTooltip() const
{
	return LOCTEXT("Tooltip", "Camera tracking over UDP: FreeD D1 and OpenTrackIO (JSON or CBOR).");
}

ULiveLinkSourceFactory::EMenuType UOrvaneTrackingSourceFactory::GetMenuType() const
{
	return EMenuType::MenuEntry;
}

TSharedPtr<ILiveLinkSource> UOrvaneTrackingSourceFactory::CreateSource(const FString& ConnectionString) const
{
	// The menu entry passes no connection string; it listens where a new setup would.
	const FString EndpointText =
		ConnectionString.IsEmpty() ? FString(FOrvaneTrackingEndpoint::DefaultText) : ConnectionString;
	FIPv4Endpoint Endpoint;
	FString Error;
	if (!FOrvaneTrackingEndpoint::Parse(EndpointText, Endpoint, Error))
	{
		UE_LOG(LogOrvaneTracking, Error, TEXT("%s"), *Error);
		return nullptr;
	}
	return MakeShared<FOrvaneTrackingSource>(EndpointText, Endpoint);
}

#undef LOCTEXT_NAMESPACE
