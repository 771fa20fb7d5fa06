// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/DeveloperSettings.h"
#include "UObject/ObjectMacros.h"

#include "RendererSettings.generated.h"

/** The pixel format of the frame buffer the editor presents. */
UENUM()
namespace EDefaultBackBufferPixelFormat
{
	enum Type : int
	{
		DBBPF_B8G8R8A8 = 0 UMETA(DisplayName = "8bit RGBA"),
		DBBPF_A16B16G16R16_DEPRECATED UMETA(Hidden),
		DBBPF_FloatRGB_DEPRECATED UMETA(Hidden),
		DBBPF_FloatRGBA UMETA(DisplayName = "Float RGBA"),
		DBBPF_A2B10G10R10 UMETA(DisplayName = "10bit RGB, 2bit Alpha"),
		DBBPF_MAX,
	};
}

namespace EDefaultBackBufferPixelFormat
{
	/** The bits of alpha a pixel of the format carries. */
	ENGINE_API int32 NumberOfBitForAlpha(EDefaultBackBufferPixelFormat::Type InDefaultBackBufferPixelFormat);

	/** The format of a console variable's value; out-of-range values give the default 8bit RGBA format. */
	ENGINE_API EDefaultBackBufferPixelFormat::Type FromInt(int32 InDefaultBackBufferPixelFormat);
} // namespace EDefaultBackBufferPixelFormat

/** Whether the custom depth pass runs, and whether it writes stencil values. */
UENUM()
namespace ECustomDepthStencil
{
	enum Type : int
	{
		Disabled = 0,
		Enabled UMETA(ToolTip = "Depth buffer created immediately. Stencil disabled."),
		EnabledOnDemand UMETA(
			ToolTip = "Depth buffer created on first use, can save memory but cause stalls. Stencil disabled."),
		EnabledWithStencil UMETA(ToolTip = "Depth buffer created immediately. Stencil available for read / write."),
	};
}

/**
 * The project's rendering settings. Every value mirrors a console variable (its ConsoleVariable metadata) and is
 * stored in DefaultEngine.ini under that variable's name.
 */
UCLASS(config = Engine, defaultconfig, meta = (DisplayName = "Rendering"), MinimalAPI)
class URendererSettings : public UDeveloperSettings
{
	GENERATED_BODY()

public:
	ENGINE_API URendererSettings(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	UPROPERTY(config, EditAnywhere, Category = DefaultSettings,
		meta = (ConsoleVariable = "r.DefaultFeature.Bloom", DisplayName = "Bloom"))
	uint32 bDefaultFeatureBloom : 1;

	UPROPERTY(config, EditAnywhere, Category = DefaultSettings,
		meta = (ConsoleVariable = "r.DefaultFeature.AutoExposure", DisplayName = "Auto Exposure"))
	uint32 bDefaultFeatureAutoExposure : 1;

	UPROPERTY(config, EditAnywhere, Category = DefaultSettings,
		meta = (ConsoleVariable = "r.DefaultFeature.MotionBlur", DisplayName = "Motion Blur"))
	uint32 bDefaultFeatureMotionBlur : 1;

	UPROPERTY(config, EditAnywhere, Category = Reflections,
		meta = (ConsoleVariable = "r.ReflectionCaptureResolution", DisplayName = "Reflection Capture Resolution",
			ConfigRestartRequired = true))
	int32 ReflectionCaptureResolution;

	UPROPERTY(config, EditAnywhere, Category = Lighting,
		meta = (ConsoleVariable = "r.AllowStaticLighting", DisplayName = "Allow Static Lighting",
			ConfigRestartRequired = true))
	uint32 bAllowStaticLighting : 1;

	UPROPERTY(config, EditAnywhere, Category = Postprocessing,
		meta = (ConsoleVariable = "r.CustomDepth", DisplayName = "Custom Depth-Stencil Pass",
			ConfigRestartRequired = true))
	TEnumAsByte<ECustomDepthStencil::Type> CustomDepthStencil;

	/** Keeps the alpha channel through post processing, so frames can be composited over other images. */
	UPROPERTY(config, EditAnywhere, Category = Postprocessing,
		meta = (ConsoleVariable = "r.PostProcessing.PropagateAlpha", DisplayName = "Alpha Output",
			ConfigRestartRequired = true))
	uint32 bEnableAlphaChannelInPostProcessing : 1;

	UPROPERTY(config, EditAnywhere, Category = Postprocessing,
		meta = (ConsoleVariable = "r.Deferred.SupportPrimitiveAlphaHoldout",
			DisplayName = "Support Primitive Alpha Holdout", ConfigRestartRequired = true))
	uint32 bDeferredSupportPrimitiveAlphaHoldout : 1;

	UPROPERTY(config, EditAnywhere, AdvancedDisplay, Category = DefaultSettings,
		meta = (ConsoleVariable = "r.DefaultBackBufferPixelFormat", DisplayName = "Frame Buffer Pixel Format",
			ConfigRestartRequired = true))
	TEnumAsByte<EDefaultBackBufferPixelFormat::Type> DefaultBackBufferPixelFormat;
};
