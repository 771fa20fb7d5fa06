// Copyright Orvane. All Rights Reserved.

#include "Engine/Texture.h"

UTexture::UTexture(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, SRGB(true)
{
}
