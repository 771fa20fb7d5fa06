// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Delegates/Delegate.h"

/** Process-wide events of the engine's life cycle, broadcast on the game thread. */
class FCoreDelegates
{
public:
	/** After the engine is initialised, before the first frame. */
	static CORE_API FSimpleMulticastDelegate OnPostEngineInit;

	/** When the engine loop finished its initialisation. */
	static CORE_API TMulticastDelegate<void()> OnFEngineLoopInitComplete;

	/** When every module loading phase of start-up is done. */
	static CORE_API FSimpleMulticastDelegate OnAllModuleLoadingPhasesComplete;

	/** At the start of each frame. */
	static CORE_API FSimpleMulticastDelegate OnBeginFrame;

	/** Early in each frame, where input and other sampled data (Live Link among them) are gathered. */
	static CORE_API FSimpleMulticastDelegate OnSamplingInput;

	/** At the end of each frame. */
	static CORE_API FSimpleMulticastDelegate OnEndFrame;

	/** When the engine starts shutting down, while modules are still loaded. */
	static CORE_API FSimpleMulticastDelegate OnEnginePreExit;

	/** Before modules are shut down. */
	static CORE_API FSimpleMulticastDelegate OnPreExit;

	/** When the engine exits. */
	static CORE_API FSimpleMulticastDelegate OnExit;
};
