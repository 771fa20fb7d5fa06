// Copyright Orvane. All Rights Reserved.

#include "LiveLinkVirtualSubject.h"

void ULiveLinkVirtualSubject::Initialize(
	FLiveLinkSubjectKey InSubjectKey, TSubclassOf<ULiveLinkRole> InRole, ILiveLinkClient* InClient)
{
	SubjectKey = InSubjectKey;
	Role = InRole;
	LiveLinkClient = InClient;
}

void ULiveLinkVirtualSubject::Update()
{
	UE_HEADLESS_UNIMPLEMENTED();
}
