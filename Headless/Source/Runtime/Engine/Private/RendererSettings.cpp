// Copyright Orvane. All Rights Reserved.

#include "Engine/RendererSettings.h"

int32 EDefaultBackBufferPixelFormat::NumberOfBitForAlpha(
	EDefaultBackBufferPixelFormat::Type InDefaultBackBufferPixelFormat)
{
	switch (InDefaultBackBufferPixelFormat)
	{
		case DBBPF_B8G8R8A8:
			return 8;
		case DBBPF_A16B16G16R16_DEPRECATED:
		case DBBPF_FloatRGBA:
			return 16;
		case DBBPF_A2B10G10R10:
			return 2;
		case DBBPF_FloatRGB_DEPRECATED:
		case DBBPF_MAX:
			break;
	}
	return 0;
}

EDefaultBackBufferPixelFormat::Type EDefaultBackBufferPixelFormat::FromInt(int32 InDefaultBackBufferPixelFormat)
{
	const bool bValid = InDefaultBackBufferPixelFormat >= 0 && InDefaultBackBufferPixelFormat < DBBPF_MAX;
	return bValid ? (Type)InDefaultBackBufferPixelFormat : DBBPF_B8G8R8A8;
}

// The defaults are those of the console variables the settings mirror.
URendererSettings::URendererSettings(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, bDefaultFeatureBloom(true)
	, bDefaultFeatureAutoExposure(true)
	, bDefaultFeatureMotionBlur(true)
	, ReflectionCaptureResolution(128)
	, bAllowStaticLighting(true)
	, CustomDepthStencil(ECustomDepthStencil::Enabled)
	, bEnableAlphaChannelInPostProcessing(false)
	, bDeferredSupportPrimitiveAlphaHoldout(false)
	, DefaultBackBufferPixelFormat(EDefaultBackBufferPixelFormat::DBBPF_B8G8R8A8)
{
	CategoryName = TEXT("Engine");
	SectionName = TEXT("Rendering");
}
