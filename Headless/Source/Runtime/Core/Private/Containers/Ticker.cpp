// Copyright Orvane. All Rights Reserved.

#include "Containers/Ticker.h"

#include "HAL/PlatformTLS.h"

#include <algorithm>

bool FTSTicker::FElement::Fire(float DeltaTime)
{
	if (Function)
	{
		return Function(DeltaTime);
	}
	if (Delegate.IsBound())
	{
		return Delegate.Execute(DeltaTime);
	}
	// The delegate's object is gone, so the delegate can never fire again.
	return false;
}

FTSTicker& FTSTicker::GetCoreTicker()
{
	static FTSTicker CoreTicker;
	return CoreTicker;
}

FTSTicker::FTSTicker() = default;

FTSTicker::~FTSTicker() = default;

FTSTicker::FDelegateHandle FTSTicker::AddTicker(const FTickerDelegate& InDelegate, float InDelay)
{
	TSharedPtr<FElement> Element = MakeShared<FElement>();
	Element->Delegate = InDelegate;
	return AddElement(Element, InDelay);
}

FTSTicker::FDelegateHandle FTSTicker::AddTicker(
	const TCHAR* InName, float InDelay, TUniqueFunction<bool(float)>&& InFunction)
{
	TSharedPtr<FElement> Element = MakeShared<FElement>();
	Element->Name = InName;
	Element->Function = MoveTemp(InFunction);
	return AddElement(Element, InDelay);
}

FTSTicker::FDelegateHandle FTSTicker::AddElement(const TSharedPtr<FElement>& Element, float InDelay)
{
	Element->DelayTime = InDelay;
	std::lock_guard<std::mutex> Lock(NewElementsMutex);
	Element->Sequence = NextSequence++;
	NewElements.push_back(Element);
	return FDelegateHandle(Element);
}

void FTSTicker::RemoveTicker(FDelegateHandle Handle)
{
	const TSharedPtr<FElement> Element = Handle.Pin();
	if (!Element.IsValid())
	{
		return;
	}
	Element->bRemoved = true;
	if (Element->ExecutingThreadId.load() == FPlatformTLS::GetCurrentThreadId())
	{
		// The element removes itself from inside its own callback; it is dropped when the callback returns.
		return;
	}
	// Wait for a callback running on another thread to return.
	std::lock_guard<std::mutex> Lock(Element->ExecutionMutex);
}

void FTSTicker::Tick(float DeltaTime)
{
	checkf(!bInTick, TEXT("FTSTicker::Tick must not be called from inside a tick."));
	bInTick = true;

	{
		// Delegates added since the last Tick join now. Their delay counts from the clock as it was when
		// they were added, which is its value before this Tick advances it.
		std::lock_guard<std::mutex> Lock(NewElementsMutex);
		for (TSharedPtr<FElement>& Element : NewElements)
		{
			Element->FireTime = CurrentTime + Element->DelayTime;
			Elements.push_back(MoveTemp(Element));
		}
		NewElements.clear();
	}

	CurrentTime += DeltaTime;

	std::vector<FElement*> DueElements;
	for (const TSharedPtr<FElement>& Element : Elements)
	{
		if (!Element->bRemoved && Element->FireTime <= CurrentTime)
		{
			DueElements.push_back(Element.Get());
		}
	}
	std::sort(DueElements.begin(), DueElements.end(),
		[](const FElement* A, const FElement* B)
		{
			return A->FireTime != B->FireTime ? A->FireTime < B->FireTime : A->Sequence < B->Sequence;
		});

	const uint32 ThisThreadId = FPlatformTLS::GetCurrentThreadId();
	for (FElement* Element : DueElements)
	{
		std::lock_guard<std::mutex> Lock(Element->ExecutionMutex);
		if (Element->bRemoved)
		{
			continue;
		}
		Element->ExecutingThreadId = ThisThreadId;
		const bool bFireAgain = Element->Fire(DeltaTime);
		Element->ExecutingThreadId = 0;
		if (bFireAgain)
		{
			Element->FireTime = CurrentTime + Element->DelayTime;
		}
		else
		{
			Element->bRemoved = true;
		}
	}

	std::erase_if(Elements,
		[](const TSharedPtr<FElement>& Element)
		{
			return Element->bRemoved.load();
		});
	bInTick = false;
}

void FTSTicker::Reset()
{
	checkf(!bInTick, TEXT("FTSTicker::Reset must not be called from inside a tick."));
	std::vector<TSharedPtr<FElement>> Removed;
	{
		std::lock_guard<std::mutex> Lock(NewElementsMutex);
		Removed.swap(NewElements);
		NextSequence = 0;
	}
	for (const TSharedPtr<FElement>& Element : Elements)
	{
		Element->bRemoved = true;
	}
	for (const TSharedPtr<FElement>& Element : Removed)
	{
		Element->bRemoved = true;
	}
	Elements.clear();
	CurrentTime = 0.0;
}

FTSTickerObjectBase::FTSTickerObjectBase(float InDelay, FTSTicker& InTicker)
{
	TickHandle = InTicker.AddTicker(TEXT("FTSTickerObjectBase"), InDelay,
		[this](float DeltaTime)
		{
			return Tick(DeltaTime);
		});
}

FTSTickerObjectBase::~FTSTickerObjectBase()
{
	FTSTicker::RemoveTicker(TickHandle);
}
