// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IPluginManager.h"
#include "PluginDescriptor.h"

/** A discovered plug-in: its descriptor file, its descriptor and whether it is enabled. */
class FPlugin final : public IPlugin
{
public:
	FPlugin(const FString& InDescriptorFileName, const FPluginDescriptor& InDescriptor, EPluginLoadedFrom InLoadedFrom);

	//~ Begin IPlugin interface
	virtual const FString& GetName() const override { return Name; }
	virtual const FString& GetDescriptorFileName() const override { return DescriptorFileName; }
	virtual FString GetBaseDir() const override;
	virtual FString GetContentDir() const override;
	virtual FString GetMountedAssetPath() const override;
	virtual bool IsEnabled() const override { return bEnabled; }
	virtual bool CanContainContent() const override { return Descriptor.bCanContainContent; }
	virtual EPluginLoadedFrom GetLoadedFrom() const override { return LoadedFrom; }
	virtual const FPluginDescriptor& GetDescriptor() const override { return Descriptor; }
	//~ End IPlugin interface

	/** Whether the plug-in is enabled when nothing refers to it. */
	bool IsEnabledByDefault() const;

	void SetEnabled(bool bInEnabled) { bEnabled = bInEnabled; }

private:
	FString Name;
	FString DescriptorFileName;
	FPluginDescriptor Descriptor;
	EPluginLoadedFrom LoadedFrom;
	bool bEnabled = false;
};
