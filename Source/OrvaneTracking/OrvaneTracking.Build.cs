// Copyright Orvane. All Rights Reserved.

using UnrealBuildTool;

public class OrvaneTracking : ModuleRules
{
	public OrvaneTracking(ReadOnlyTargetRules Target) : base(Target)
	{
		PCHUsage = PCHUsageMode.UseExplicitOrSharedPCHs;

		PublicDependencyModuleNames.AddRange(new string[]
		{
			"Core",
			"CoreUObject",
			"LiveLinkInterface",
			"Networking",
		});

		PrivateDependencyModuleNames.AddRange(new string[]
		{
			"Cbor",
			"Json",
			"Projects",
			"Sockets",
		});
	}
}
