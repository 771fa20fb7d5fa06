// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "Features/IModularFeatures.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{
	class IGreeter : public IModularFeature
	{
	public:
		virtual int32 Greet() const = 0;
	};

	class FGreeter : public IGreeter
	{
	public:
		explicit FGreeter(int32 InValue)
			: Value(InValue)
		{
		}
		virtual int32 Greet() const override { return Value; }

	private:
		int32 Value;
	};

	const FName GreeterType(TEXT("ModularFeaturesTest_Greeter"));
} // namespace

TEST(ModularFeaturesTest, RegisteredImplementationsAreFoundInRegistrationOrder)
{
	IModularFeatures& Features = IModularFeatures::Get();
	EXPECT_FALSE(Features.IsModularFeatureAvailable(GreeterType));
	EXPECT_EQ(Features.GetModularFeatureImplementation(GreeterType, 0), nullptr);

	FGreeter First(1);
	FGreeter Second(2);
	Features.RegisterModularFeature(GreeterType, &First);
	Features.RegisterModularFeature(GreeterType, &Second);
	EXPECT_TRUE(Features.IsModularFeatureAvailable(GreeterType));
	EXPECT_EQ(Features.GetModularFeatureImplementationCount(GreeterType), 2);
	EXPECT_EQ(Features.GetModularFeature<IGreeter>(GreeterType).Greet(), 1);
	EXPECT_EQ(Features.GetModularFeatureImplementation(GreeterType, 1), &Second);
	EXPECT_EQ(Features.GetModularFeatureImplementation(GreeterType, 2), nullptr);
	const TArray<IGreeter*> All = Features.GetModularFeatureImplementations<IGreeter>(GreeterType);
	ASSERT_EQ(All.Num(), 2);
	EXPECT_EQ(All[1]->Greet(), 2);

	Features.UnregisterModularFeature(GreeterType, &First);
	EXPECT_EQ(Features.GetModularFeature<IGreeter>(GreeterType).Greet(), 2);
	Features.UnregisterModularFeature(GreeterType, &Second);
	EXPECT_FALSE(Features.IsModularFeatureAvailable(GreeterType));
}

TEST(ModularFeaturesTest, RegistrationEventsNameTheTypeAndTheImplementation)
{
	IModularFeatures& Features = IModularFeatures::Get();
	FGreeter Greeter(7);
	TArray<FString> Events;
	const FDelegateHandle Registered = Features.OnModularFeatureRegistered().AddLambda(
		[&Events, &Greeter](const FName& Type, IModularFeature* Feature)
		{
			Events.Add(TEXT("+") + Type.ToString() + (Feature == &Greeter ? TEXT("") : TEXT("?")));
		});
	const FDelegateHandle Unregistered = Features.OnModularFeatureUnregistered().AddLambda(
		[&Events, &Greeter](const FName& Type, IModularFeature* Feature)
		{
			Events.Add(TEXT("-") + Type.ToString() + (Feature == &Greeter ? TEXT("") : TEXT("?")));
		});

	Features.RegisterModularFeature(GreeterType, &Greeter);
	Features.UnregisterModularFeature(GreeterType, &Greeter);
	// Unregistering what is not registered changes nothing and announces nothing.
	Features.UnregisterModularFeature(GreeterType, &Greeter);

	Features.OnModularFeatureRegistered().Remove(Registered);
	Features.OnModularFeatureUnregistered().Remove(Unregistered);
	ASSERT_EQ(Events.Num(), 2);
	EXPECT_EQ(ToUtf8(Events[0]), "+ModularFeaturesTest_Greeter");
	EXPECT_EQ(ToUtf8(Events[1]), "-ModularFeaturesTest_Greeter");
}

TEST(ModularFeaturesTest, ThreadsRegisterAndQueryConcurrently)
{
	IModularFeatures& Features = IModularFeatures::Get();
	const FName Type(TEXT("ModularFeaturesTest_Concurrent"));
	constexpr int32 NumThreads = 4;
	constexpr int32 NumRounds = 2000;
	std::vector<FGreeter> Greeters;
	for (int32 Index = 0; Index < NumThreads; ++Index)
	{
		Greeters.emplace_back(Index);
	}
	std::atomic<int32> BadReads{0};
	std::vector<std::thread> Threads;
	for (int32 Index = 0; Index < NumThreads; ++Index)
	{
		Threads.emplace_back(
			[&Features, &Greeters, &BadReads, Type, Index]()
			{
				for (int32 Round = 0; Round < NumRounds; ++Round)
				{
					Features.RegisterModularFeature(Type, &Greeters[Index]);
					const TArray<IGreeter*> Seen = Features.GetModularFeatureImplementations<IGreeter>(Type);
					if (!Seen.Contains(&Greeters[Index]))
					{
						++BadReads;
					}
					Features.UnregisterModularFeature(Type, &Greeters[Index]);
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(BadReads.load(), 0);
	EXPECT_EQ(Features.GetModularFeatureImplementationCount(Type), 0);
}
