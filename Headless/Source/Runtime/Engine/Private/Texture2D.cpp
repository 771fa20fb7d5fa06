// Copyright Orvane. All Rights Reserved.

#include "Engine/Texture2D.h"

UTexture2D::UTexture2D(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}
