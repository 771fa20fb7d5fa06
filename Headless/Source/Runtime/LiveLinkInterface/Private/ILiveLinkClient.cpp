// Copyright Orvane. All Rights Reserved.

#include "ILiveLinkClient.h"

FName ILiveLinkClient::ModularFeatureName(TEXT("ModularFeature_LiveLinkClient"));
