// Copyright Orvane. All Rights Reserved.

using UnrealBuildTool;

public class OrvaneLiveLink : ModuleRules
{
	public OrvaneLiveLink(ReadOnlyTargetRules Target) : base(Target)
	{
		PCHUsage = PCHUsageMode.UseExplicitOrSharedPCHs;

		PublicDependencyModuleNames.AddRange(new string[]
		{
			"Core",
			"CoreUObject",
			"Engine",
		});

		PrivateDependencyModuleNames.AddRange(new string[]
		{
			"AssetRegistry",
			"AssetTools",
			"CinematicCamera",
			"DisplayCluster",
			"DisplayClusterConfiguration",
			"Json",
			"LiveLink",
			"LiveLinkCamera",
			"LiveLinkComponents",
			"LiveLinkInterface",
			"OrvaneTracking",
			"UnrealEd",
		});
	}
}
