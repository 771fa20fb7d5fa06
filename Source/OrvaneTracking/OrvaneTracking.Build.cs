// Copyright Orvane. All Rights Reserved.

using UnrealBuildTool;

public class OrvaneTracking : ModuleRules
{
	public OrvaneTracking(ReadOnlyTargetRules Target) : base(Target)
	{
		PCHUsage = PCHUsageMode.UseExplicitOrSharedPCHs;

		PublicDependencyModuleNames.AddRange(new string[]
		{
			"CinematicCamera",
			"Core",
			"CoreUObject",
			"Engine",
			"LiveLinkComponents",
			"LiveLinkInterface",
			"Networking",
		});

		PrivateDependencyModuleNames.AddRange(new string[]
		{
			"Cbor",
			"Json",
			"LiveLink",
			"LiveLinkCamera",
			"Projects",
			"Sockets",
		});
	}
}
