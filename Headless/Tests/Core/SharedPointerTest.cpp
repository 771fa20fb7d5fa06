// Copyright Orvane. All Rights Reserved.

#include "Templates/SharedPointer.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{
	struct FBase
	{
		static inline int32 Live = 0;
		int32 Value = 0;

		explicit FBase(int32 InValue = 0)
			: Value(InValue)
		{
			++Live;
		}
		virtual ~FBase() { --Live; }
	};

	struct FDerived : FBase
	{
		explicit FDerived(int32 InValue)
			: FBase(InValue)
		{
		}
	};

	struct FShareable : public TSharedFromThis<FShareable>
	{
		int32 Value = 7;

		TSharedRef<FShareable> GetSelf() { return SharedThis(this); }
	};

	class SharedPointerTest : public ::testing::Test
	{
	protected:
		void SetUp() override { FBase::Live = 0; }
		void TearDown() override { EXPECT_EQ(FBase::Live, 0); }
	};
} // namespace

TEST_F(SharedPointerTest, MakeSharedCountsReferencesAndDestroysOnce)
{
	TSharedPtr<FBase> Second;
	{
		TSharedRef<FBase> First = MakeShared<FBase>(5);
		EXPECT_EQ(First->Value, 5);
		EXPECT_EQ(First.GetSharedReferenceCount(), 1);
		EXPECT_TRUE(First.IsUnique());
		Second = First;
		EXPECT_EQ(First.GetSharedReferenceCount(), 2);
		EXPECT_FALSE(First.IsUnique());
		EXPECT_EQ(FBase::Live, 1);
	}
	EXPECT_EQ(FBase::Live, 1);
	EXPECT_TRUE(Second.IsUnique());
	Second.Reset();
	EXPECT_FALSE(Second.IsValid());
	EXPECT_EQ(Second.GetSharedReferenceCount(), 0);
	EXPECT_EQ(FBase::Live, 0);
}

TEST_F(SharedPointerTest, IsUniqueIgnoresWeakReferences)
{
	TSharedPtr<FBase> Shared = MakeShared<FBase>(1);
	TWeakPtr<FBase> WeakA = Shared;
	TWeakPtr<FBase> WeakB = WeakA;
	EXPECT_TRUE(Shared.IsUnique());
	EXPECT_EQ(Shared.GetSharedReferenceCount(), 1);
	{
		TSharedPtr<FBase> Pinned = WeakA.Pin();
		EXPECT_FALSE(Shared.IsUnique());
		EXPECT_EQ(Shared.GetSharedReferenceCount(), 2);
	}
	EXPECT_TRUE(Shared.IsUnique());
}

TEST_F(SharedPointerTest, WeakPointerExpiresWithTheObject)
{
	TWeakPtr<FBase> Weak;
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_FALSE(Weak.Pin().IsValid());
	{
		TSharedRef<FBase> Shared = MakeShared<FBase>(3);
		Weak = Shared;
		EXPECT_TRUE(Weak.IsValid());
		EXPECT_TRUE(Weak.HasSameObject(&Shared.Get()));
		TSharedPtr<FBase> Pinned = Weak.Pin();
		ASSERT_TRUE(Pinned.IsValid());
		EXPECT_EQ(Pinned->Value, 3);
	}
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_FALSE(Weak.Pin().IsValid());
	EXPECT_EQ(Weak.Pin().Get(), nullptr);
	Weak.Reset();
	EXPECT_FALSE(Weak.IsValid());
}

TEST_F(SharedPointerTest, MakeShareableAndRawPointerConstruction)
{
	TSharedPtr<FBase> FromRaw(new FBase(1));
	TSharedPtr<FBase> FromShareable = MakeShareable(new FBase(2));
	TSharedRef<FBase> RefFromShareable = MakeShareable(new FBase(3));
	EXPECT_EQ(FromRaw->Value, 1);
	EXPECT_EQ(FromShareable->Value, 2);
	EXPECT_EQ(RefFromShareable->Value, 3);
	EXPECT_EQ(FBase::Live, 3);
	TSharedPtr<FBase> Null(nullptr);
	EXPECT_FALSE(Null.IsValid());
	EXPECT_FALSE(static_cast<bool>(Null));
	EXPECT_TRUE(Null == nullptr);
}

TEST_F(SharedPointerTest, MakeShareableWithDeleterCallsTheDeleter)
{
	int32 DeleterCalls = 0;
	FBase* Deleted = nullptr;
	{
		TSharedPtr<FBase> Shared = MakeShareable(new FBase(9),
			[&DeleterCalls, &Deleted](FBase* Object)
			{
				++DeleterCalls;
				Deleted = Object;
				delete Object;
			});
		TSharedPtr<FBase> Copy = Shared;
		EXPECT_EQ(DeleterCalls, 0);
		Shared.Reset();
		EXPECT_EQ(DeleterCalls, 0);
		EXPECT_EQ(Copy->Value, 9);
	}
	EXPECT_EQ(DeleterCalls, 1);
	EXPECT_NE(Deleted, nullptr);
}

TEST_F(SharedPointerTest, SharedFromThisHandsOutMoreReferences)
{
	TSharedRef<FShareable> Shared = MakeShared<FShareable>();
	EXPECT_TRUE(Shared->DoesSharedInstanceExist());
	TSharedRef<FShareable> Again = Shared->AsShared();
	EXPECT_EQ(&Again.Get(), &Shared.Get());
	EXPECT_EQ(Shared.GetSharedReferenceCount(), 2);
	TSharedRef<FShareable> Self = Shared->GetSelf();
	EXPECT_EQ(Shared.GetSharedReferenceCount(), 3);
	TWeakPtr<FShareable> Weak = Shared->AsWeak();
	EXPECT_TRUE(Weak.IsValid());
	const FShareable& ConstRef = *Shared;
	TSharedRef<const FShareable> ConstShared = ConstRef.AsShared();
	EXPECT_EQ(ConstShared->Value, 7);

	TSharedPtr<FShareable> FromRaw(new FShareable());
	EXPECT_EQ(&FromRaw->AsShared().Get(), FromRaw.Get());

	FShareable NotShared;
	EXPECT_FALSE(NotShared.DoesSharedInstanceExist());
}

TEST_F(SharedPointerTest, CastsAndComparisons)
{
	TSharedRef<FDerived> Derived = MakeShared<FDerived>(4);
	TSharedRef<FBase> Base = Derived;
	TSharedPtr<FBase> BasePtr = Base;
	TSharedPtr<FDerived> Back = StaticCastSharedPtr<FDerived>(BasePtr);
	TSharedRef<FDerived> BackRef = StaticCastSharedRef<FDerived>(Base);
	EXPECT_EQ(Back.Get(), &Derived.Get());
	EXPECT_EQ(&BackRef.Get(), &Derived.Get());
	EXPECT_EQ(Derived.GetSharedReferenceCount(), 5);

	TSharedRef<const FBase> ConstRef = Base;
	TSharedRef<FBase> Mutable = ConstCastSharedRef<FBase>(ConstRef);
	TSharedPtr<const FBase> ConstPtr = BasePtr;
	TSharedPtr<FBase> MutablePtr = ConstCastSharedPtr<FBase>(ConstPtr);
	EXPECT_EQ(MutablePtr.Get(), &Mutable.Get());

	EXPECT_TRUE(Base == Derived);
	EXPECT_TRUE(BasePtr == Back);
	EXPECT_TRUE(Base == BasePtr);
	EXPECT_TRUE(BasePtr != nullptr);
	TSharedRef<FBase> Other = MakeShared<FBase>(4);
	EXPECT_TRUE(Other != Base);
	EXPECT_EQ(GetTypeHash(Base), GetTypeHash(BasePtr));
	EXPECT_EQ(BasePtr.ToSharedRef()->Value, 4);
}

TEST_F(SharedPointerTest, NotThreadSafeModeWorksTheSame)
{
	TSharedRef<FBase, ESPMode::NotThreadSafe> Shared = MakeShared<FBase, ESPMode::NotThreadSafe>(2);
	TWeakPtr<FBase, ESPMode::NotThreadSafe> Weak = Shared;
	TSharedPtr<FBase, ESPMode::NotThreadSafe> Copy = Shared;
	EXPECT_EQ(Shared.GetSharedReferenceCount(), 2);
	Copy.Reset();
	EXPECT_TRUE(Shared.IsUnique());
	EXPECT_TRUE(Weak.IsValid());
}

TEST_F(SharedPointerTest, ThreadSafeCountsSurviveConcurrentCopies)
{
	TSharedRef<FBase> Shared = MakeShared<FBase>(1);
	std::vector<std::thread> Threads;
	for (int32 ThreadIndex = 0; ThreadIndex < 4; ++ThreadIndex)
	{
		Threads.emplace_back(
			[Shared]()
			{
				for (int32 I = 0; I < 20000; ++I)
				{
					TSharedPtr<FBase> Copy = Shared;
					TWeakPtr<FBase> Weak = Copy;
					TSharedPtr<FBase> Pinned = Weak.Pin();
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(Shared.GetSharedReferenceCount(), 1);
	EXPECT_EQ(FBase::Live, 1);
}

TEST(SharedPointerDeathTest, NullSharedRefIsACheckFailure)
{
	FBase* Null = nullptr;
	EXPECT_DEATH({ TSharedRef<FBase> Ref(Null); }, "A TSharedRef cannot be null");
	TSharedPtr<FBase> Empty;
	EXPECT_DEATH((void)Empty.ToSharedRef(), "A TSharedRef cannot be null");
	FShareable NotShared;
	EXPECT_DEATH((void)NotShared.AsShared(), "not \\(or not yet, or no longer\\) owned by a shared pointer");
}
