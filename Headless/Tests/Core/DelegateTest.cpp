// Copyright Orvane. All Rights Reserved.

#include "Delegates/Delegate.h"
#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "Misc/CoreDelegates.h"
#include "Templates/SharedPointer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

DECLARE_DELEGATE(FTestSimple);
DECLARE_DELEGATE_OneParam(FTestOneParam, int32);
DECLARE_DELEGATE_TwoParams(FTestTwoParams, int32, const FString&);
DECLARE_DELEGATE_RetVal(int32, FTestRetVal);
DECLARE_DELEGATE_RetVal_OneParam(int32, FTestRetValOneParam, int32);
DECLARE_DELEGATE_RetVal_TwoParams(FString, FTestRetValTwoParams, const FString&, int32);
DECLARE_DELEGATE_NineParams(FTestNineParams, int32, int32, int32, int32, int32, int32, int32, int32, int32);
DECLARE_MULTICAST_DELEGATE(FTestMulticast);
DECLARE_MULTICAST_DELEGATE_OneParam(FTestMulticastOneParam, int32);

namespace
{
	std::string ToUtf8(const FString& Text)
	{
		return std::string(TCHAR_TO_UTF8(*Text));
	}

	int32 GStaticCalls = 0;

	int32 StaticTimesTwo(int32 Value)
	{
		++GStaticCalls;
		return Value * 2;
	}

	int32 StaticAddPayload(int32 Value, int32 Payload)
	{
		return Value + Payload;
	}

	class FCounter
	{
	public:
		void Add(int32 Amount) { Total += Amount; }

		int32 Get() const { return Total; }

		int32 AddWithPayload(int32 Amount, int32 Payload)
		{
			Total += Amount * Payload;
			return Total;
		}

		void Bump() { ++Total; }

		int32 Total = 0;
	};

	class FSharedCounter : public TSharedFromThis<FSharedCounter>
	{
	public:
		void Add(int32 Amount) { Total += Amount; }

		int32 Get() const { return Total; }

		void Bump() { ++Total; }

		int32 Total = 0;
	};
} // namespace

TEST(DelegateTest, UnboundDelegateReportsItself)
{
	FTestSimple Delegate;
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.ExecuteIfBound());
	EXPECT_FALSE(Delegate.GetHandle().IsValid());
}

TEST(DelegateTest, LambdaReceivesArgumentsAndReturnsItsValue)
{
	FTestRetValOneParam Delegate = FTestRetValOneParam::CreateLambda(
		[](int32 Value)
		{
			return Value + 1;
		});
	EXPECT_TRUE(Delegate.IsBound());
	EXPECT_EQ(Delegate.Execute(41), 42);

	FTestRetValTwoParams Joiner;
	Joiner.BindLambda(
		[](const FString& Text, int32 Count)
		{
			return FString::Printf(TEXT("%s x%d"), *Text, Count);
		});
	EXPECT_EQ(ToUtf8(Joiner.Execute(FString(TEXT("Preset")), 3)), "Preset x3");
}

TEST(DelegateTest, LambdaOwnsItsCapturesByValue)
{
	FTestRetVal Delegate;
	{
		FString Name(TEXT("Studio"));
		Delegate.BindLambda(
			[Name]()
			{
				return Name.Len();
			});
		Name = TEXT("changed after binding");
	}
	EXPECT_EQ(Delegate.Execute(), 6);
}

TEST(DelegateTest, MutableLambdaKeepsItsStateBetweenCalls)
{
	FTestRetVal Delegate = FTestRetVal::CreateLambda(
		[Calls = 0]() mutable
		{
			return ++Calls;
		});
	EXPECT_EQ(Delegate.Execute(), 1);
	EXPECT_EQ(Delegate.Execute(), 2);
}

TEST(DelegateTest, StaticFunctionAndPayload)
{
	GStaticCalls = 0;
	FTestRetValOneParam Twice = FTestRetValOneParam::CreateStatic(&StaticTimesTwo);
	EXPECT_EQ(Twice.Execute(21), 42);
	EXPECT_EQ(GStaticCalls, 1);

	FTestRetValOneParam WithPayload;
	WithPayload.BindStatic(&StaticAddPayload, 100);
	EXPECT_EQ(WithPayload.Execute(5), 105);
}

TEST(DelegateTest, RawMethodsIncludingConstAndPayload)
{
	FCounter Counter;
	FTestOneParam Add = FTestOneParam::CreateRaw(&Counter, &FCounter::Add);
	Add.Execute(5);
	Add.Execute(2);
	EXPECT_EQ(Counter.Total, 7);
	EXPECT_TRUE(Add.IsBoundToObject(&Counter));
	EXPECT_FALSE(Add.IsBoundToObject(&GStaticCalls));

	const FCounter& ConstCounter = Counter;
	FTestRetVal Get = FTestRetVal::CreateRaw(&ConstCounter, &FCounter::Get);
	EXPECT_EQ(Get.Execute(), 7);

	FTestRetValOneParam Scaled;
	Scaled.BindRaw(&Counter, &FCounter::AddWithPayload, 10);
	EXPECT_EQ(Scaled.Execute(3), 37);
}

TEST(DelegateTest, LambdaPayloadIsCopiedAndAppended)
{
	FString Payload(TEXT("Camera"));
	FTestTwoParams Delegate;
	std::string Seen;
	Delegate = FTestTwoParams::CreateLambda(
		[&Seen](int32 Index, const FString& Text, const FString& Extra, int32 Number)
		{
			Seen = ToUtf8(FString::Printf(TEXT("%d %s %s %d"), Index, *Text, *Extra, Number));
		},
		Payload, 9);
	Payload = TEXT("changed");
	Delegate.Execute(1, FString(TEXT("Lens")));
	EXPECT_EQ(Seen, "1 Lens Camera 9");
}

TEST(DelegateTest, SharedPointerBindingExpiresWithTheObject)
{
	TSharedPtr<FSharedCounter> Counter = MakeShared<FSharedCounter>();
	FTestOneParam Add = FTestOneParam::CreateSP(Counter.ToSharedRef(), &FSharedCounter::Add);
	FTestRetVal Get;
	Get.BindSP(Counter.Get(), &FSharedCounter::Get);
	FTestSimple Bump = FTestSimple::CreateSP(Counter.Get(), &FSharedCounter::Bump);

	Add.Execute(4);
	EXPECT_TRUE(Bump.ExecuteIfBound());
	EXPECT_EQ(Get.Execute(), 5);
	EXPECT_TRUE(Add.IsBoundToObject(Counter.Get()));
	// The delegate holds only a weak reference.
	EXPECT_EQ(Counter.GetSharedReferenceCount(), 1);

	Counter.Reset();
	EXPECT_FALSE(Add.IsBound());
	EXPECT_FALSE(Get.IsBound());
	EXPECT_FALSE(Bump.IsBound());
	EXPECT_FALSE(Bump.ExecuteIfBound());
}

TEST(DelegateTest, SharedLambdaExpiresWithItsOwner)
{
	TSharedRef<FSharedCounter> Owner = MakeShared<FSharedCounter>();
	int32 Calls = 0;
	FTestSimple Delegate = FTestSimple::CreateSPLambda(Owner,
		[&Calls]()
		{
			++Calls;
		});
	EXPECT_TRUE(Delegate.ExecuteIfBound());
	EXPECT_EQ(Calls, 1);
	{
		TSharedRef<FSharedCounter> Replacement = MakeShared<FSharedCounter>();
		Owner = Replacement;
	}
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_FALSE(Delegate.ExecuteIfBound());
	EXPECT_EQ(Calls, 1);
}

TEST(DelegateTest, CopiesShareTheHandleButNotTheState)
{
	FTestRetVal Original = FTestRetVal::CreateLambda(
		[Calls = 0]() mutable
		{
			return ++Calls;
		});
	EXPECT_EQ(Original.Execute(), 1);
	FTestRetVal Copy = Original;
	EXPECT_TRUE(Copy.GetHandle().IsValid());
	EXPECT_EQ(Copy.GetHandle(), Original.GetHandle());
	EXPECT_EQ(Copy.Execute(), 2);
	EXPECT_EQ(Copy.Execute(), 3);
	EXPECT_EQ(Original.Execute(), 2);

	FTestRetVal Moved = MoveTemp(Copy);
	EXPECT_EQ(Moved.Execute(), 4);
	Moved.Unbind();
	EXPECT_FALSE(Moved.IsBound());
}

TEST(DelegateTest, EachBindingGetsANewHandle)
{
	FTestSimple Delegate = FTestSimple::CreateLambda([] {});
	const FDelegateHandle First = Delegate.GetHandle();
	Delegate.BindLambda([] {});
	EXPECT_TRUE(First.IsValid());
	EXPECT_NE(Delegate.GetHandle(), First);

	FDelegateHandle Handle = First;
	Handle.Reset();
	EXPECT_FALSE(Handle.IsValid());
	EXPECT_EQ(Handle, FDelegateHandle());
	EXPECT_NE(FDelegateHandle(FDelegateHandle::GenerateNewHandle), FDelegateHandle(FDelegateHandle::GenerateNewHandle));
	EXPECT_EQ(GetTypeHash(First), GetTypeHash(FDelegateHandle(First)));
}

TEST(DelegateTest, NineParametersArrive)
{
	int32 Sum = 0;
	FTestNineParams Delegate = FTestNineParams::CreateLambda(
		[&Sum](int32 A, int32 B, int32 C, int32 D, int32 E, int32 F, int32 G, int32 H, int32 I)
		{
			Sum = A + B * 10 + C * 100 + D + E + F + G + H + I * 1000;
		});
	Delegate.Execute(1, 2, 3, 0, 0, 0, 0, 0, 4);
	EXPECT_EQ(Sum, 4321);
}

TEST(DelegateTest, DelegateMayRebindItselfWhileExecuting)
{
	FTestRetVal Delegate;
	Delegate.BindLambda(
		[&Delegate, Text = FString(TEXT("still alive"))]()
		{
			Delegate.Unbind();
			// The capture must survive its own delegate being unbound.
			return Text.Len();
		});
	EXPECT_EQ(Delegate.Execute(), 11);
	EXPECT_FALSE(Delegate.IsBound());
}

TEST(DelegateDeathTest, ExecutingAnUnboundDelegateIsFatal)
{
	FTestSimple Delegate;
	EXPECT_DEATH(Delegate.Execute(), "Execute was called on a delegate that is not bound");

	TSharedPtr<FSharedCounter> Counter = MakeShared<FSharedCounter>();
	FTestSimple Expired = FTestSimple::CreateSP(Counter.ToSharedRef(), &FSharedCounter::Bump);
	Counter.Reset();
	EXPECT_DEATH(Expired.Execute(), "Execute was called on a delegate that is not bound");
}

TEST(MulticastDelegateTest, BroadcastCallsEveryBinding)
{
	FTestMulticastOneParam Multicast;
	EXPECT_FALSE(Multicast.IsBound());
	FCounter Raw;
	TSharedRef<FSharedCounter> Shared = MakeShared<FSharedCounter>();
	int32 LambdaTotal = 0;
	const FDelegateHandle RawHandle = Multicast.AddRaw(&Raw, &FCounter::Add);
	const FDelegateHandle SharedHandle = Multicast.AddSP(Shared, &FSharedCounter::Add);
	const FDelegateHandle LambdaHandle = Multicast.AddLambda(
		[&LambdaTotal](int32 Value)
		{
			LambdaTotal += Value;
		});
	const FDelegateHandle StaticHandle = Multicast.AddStatic([](int32, int32) {}, 3);
	const FDelegateHandle AddedHandle = Multicast.Add(FTestMulticastOneParam::FDelegate::CreateLambda(
		[&LambdaTotal](int32 Value)
		{
			LambdaTotal += 100 * Value;
		}));
	EXPECT_TRUE(RawHandle.IsValid());
	EXPECT_TRUE(SharedHandle.IsValid());
	EXPECT_TRUE(LambdaHandle.IsValid());
	EXPECT_TRUE(StaticHandle.IsValid());
	EXPECT_TRUE(AddedHandle.IsValid());
	EXPECT_TRUE(Multicast.IsBound());

	Multicast.Broadcast(2);
	EXPECT_EQ(Raw.Total, 2);
	EXPECT_EQ(Shared->Total, 2);
	EXPECT_EQ(LambdaTotal, 202);
}

TEST(MulticastDelegateTest, AddingAnUnboundDelegateGivesAnInvalidHandle)
{
	FTestMulticast Multicast;
	EXPECT_FALSE(Multicast.Add(FTestMulticast::FDelegate()).IsValid());
	EXPECT_FALSE(Multicast.IsBound());
}

TEST(MulticastDelegateTest, RemoveByHandle)
{
	FTestMulticast Multicast;
	int32 A = 0;
	int32 B = 0;
	const FDelegateHandle HandleA = Multicast.AddLambda(
		[&A]
		{
			++A;
		});
	Multicast.AddLambda(
		[&B]
		{
			++B;
		});
	EXPECT_TRUE(Multicast.Remove(HandleA));
	EXPECT_FALSE(Multicast.Remove(HandleA));
	EXPECT_FALSE(Multicast.Remove(FDelegateHandle()));
	Multicast.Broadcast();
	EXPECT_EQ(A, 0);
	EXPECT_EQ(B, 1);
}

TEST(MulticastDelegateTest, RemoveAllRemovesTheBindingsOfOneObject)
{
	FTestMulticast Multicast;
	FCounter First;
	FCounter Second;
	Multicast.AddRaw(&First, &FCounter::Bump);
	Multicast.AddRaw(&First, &FCounter::Bump);
	Multicast.AddRaw(&Second, &FCounter::Bump);
	EXPECT_TRUE(Multicast.IsBoundToObject(&First));
	EXPECT_EQ(Multicast.RemoveAll(&First), 2);
	EXPECT_FALSE(Multicast.IsBoundToObject(&First));
	Multicast.Broadcast();
	EXPECT_EQ(First.Total, 0);
	EXPECT_EQ(Second.Total, 1);
	EXPECT_EQ(Multicast.RemoveAll(nullptr), 0);
}

TEST(MulticastDelegateTest, RemovalDuringBroadcastPreventsTheLaterCall)
{
	FTestMulticast Multicast;
	std::vector<int32> Calls;
	FDelegateHandle Handles[3];
	// Whichever binding runs first removes the other two, so exactly one call happens.
	for (int32 Index = 0; Index < 3; ++Index)
	{
		Handles[Index] = Multicast.AddLambda(
			[&Multicast, &Calls, &Handles, Index]
			{
				Calls.push_back(Index);
				for (int32 Other = 0; Other < 3; ++Other)
				{
					if (Other != Index)
					{
						Multicast.Remove(Handles[Other]);
					}
				}
			});
	}
	Multicast.Broadcast();
	EXPECT_EQ(Calls.size(), 1u);
	Multicast.Broadcast();
	EXPECT_EQ(Calls.size(), 2u);
	EXPECT_EQ(Calls[0], Calls[1]);
}

TEST(MulticastDelegateTest, BindingMayRemoveItselfDuringBroadcast)
{
	FTestMulticast Multicast;
	int32 OneShotCalls = 0;
	int32 OtherCalls = 0;
	FDelegateHandle OneShot;
	OneShot = Multicast.AddLambda(
		[&Multicast, &OneShot, &OneShotCalls, Text = FString(TEXT("capture"))]
		{
			EXPECT_TRUE(Multicast.Remove(OneShot));
			// The lambda's captures stay valid for the rest of its own call.
			OneShotCalls += Text.Len() == 7 ? 1 : 100;
		});
	Multicast.AddLambda(
		[&OtherCalls]
		{
			++OtherCalls;
		});
	Multicast.Broadcast();
	Multicast.Broadcast();
	EXPECT_EQ(OneShotCalls, 1);
	EXPECT_EQ(OtherCalls, 2);
}

TEST(MulticastDelegateTest, BindingsAddedDuringBroadcastWaitForTheNextOne)
{
	FTestMulticast Multicast;
	int32 LateCalls = 0;
	int32 AdderCalls = 0;
	Multicast.AddLambda(
		[&Multicast, &LateCalls, &AdderCalls]
		{
			++AdderCalls;
			Multicast.AddLambda(
				[&LateCalls]
				{
					++LateCalls;
				});
		});
	Multicast.Broadcast();
	EXPECT_EQ(AdderCalls, 1);
	EXPECT_EQ(LateCalls, 0);
	Multicast.Broadcast();
	EXPECT_EQ(AdderCalls, 2);
	EXPECT_EQ(LateCalls, 1);
}

TEST(MulticastDelegateTest, ExpiredSharedBindingsAreSkipped)
{
	FTestMulticastOneParam Multicast;
	TSharedPtr<FSharedCounter> Dying = MakeShared<FSharedCounter>();
	TSharedRef<FSharedCounter> Living = MakeShared<FSharedCounter>();
	Multicast.AddSP(Dying.ToSharedRef(), &FSharedCounter::Add);
	Multicast.AddSP(Living, &FSharedCounter::Add);
	Multicast.Broadcast(1);
	TWeakPtr<FSharedCounter> Watch = Dying;
	Dying.Reset();
	EXPECT_FALSE(Watch.IsValid());
	Multicast.Broadcast(10);
	EXPECT_EQ(Living->Total, 11);
	EXPECT_TRUE(Multicast.IsBound());
}

TEST(MulticastDelegateTest, ClearRemovesEverythingEvenDuringBroadcast)
{
	FTestMulticast Multicast;
	int32 Calls = 0;
	Multicast.AddLambda(
		[&]
		{
			++Calls;
			Multicast.Clear();
		});
	Multicast.AddLambda(
		[&]
		{
			++Calls;
			Multicast.Clear();
		});
	Multicast.Broadcast();
	EXPECT_EQ(Calls, 1);
	EXPECT_FALSE(Multicast.IsBound());
	Multicast.Broadcast();
	EXPECT_EQ(Calls, 1);
}

TEST(MulticastDelegateTest, CoreDelegatesAreMulticastDelegates)
{
	int32 Calls = 0;
	const FDelegateHandle Handle = FCoreDelegates::OnPostEngineInit.AddLambda(
		[&Calls]
		{
			++Calls;
		});
	FCoreDelegates::OnPostEngineInit.Broadcast();
	EXPECT_TRUE(FCoreDelegates::OnPostEngineInit.Remove(Handle));
	FCoreDelegates::OnPostEngineInit.Broadcast();
	EXPECT_EQ(Calls, 1);
}

TEST(SimpleDelegateTest, SimpleAliasesHaveTheVoidSignature)
{
	int32 Calls = 0;
	FSimpleDelegate Single = FSimpleDelegate::CreateLambda(
		[&Calls]
		{
			++Calls;
		});
	FSimpleMulticastDelegate Multi;
	Multi.Add(Single);
	Single.Execute();
	Multi.Broadcast();
	EXPECT_EQ(Calls, 2);
}
