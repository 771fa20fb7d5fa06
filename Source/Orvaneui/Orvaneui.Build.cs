// Copyright Orvane. All Rights Reserved.

using UnrealBuildTool;

public class Orvaneui : ModuleRules
{
	public Orvaneui(ReadOnlyTargetRules Target) : base(Target)
	{
		PCHUsage = PCHUsageMode.UseExplicitOrSharedPCHs;

		PublicDependencyModuleNames.AddRange(new string[]
		{
			"Core",
			"CoreUObject",
			"Engine",
			"Slate",
			"SlateCore",
		});

		PrivateDependencyModuleNames.AddRange(new string[]
		{
			"AssetRegistry",
			"CinematicCamera",
			"DesktopPlatform",
			"EngineSettings",
			"LiveLink",
			"LiveLinkInterface",
			"OrvaneLiveLink",
			"OrvaneTracking",
			"Projects",
			"SettingsEditor",
			"ToolMenus",
			"UnrealEd",
		});
	}
}
