// Copyright Orvane. All Rights Reserved.

#include "Templates/RefCounting.h"
#include "Templates/UnrealTemplate.h"

#include <gtest/gtest.h>

namespace
{
	struct FCountedResource : public FRefCountBase
	{
		static inline int32 Live = 0;

		FCountedResource() { ++Live; }
		~FCountedResource() override { --Live; }
	};
} // namespace

TEST(RefCountingTest, PointerHoldsOneReferenceEach)
{
	FCountedResource::Live = 0;
	{
		TRefCountPtr<FCountedResource> First = MakeRefCount<FCountedResource>();
		EXPECT_EQ(First->GetRefCount(), 1u);
		TRefCountPtr<FCountedResource> Second = First;
		EXPECT_EQ(First.GetRefCount(), 2u);
		TRefCountPtr<FCountedResource> Moved = MoveTemp(Second);
		EXPECT_FALSE(Second.IsValid());
		EXPECT_EQ(First.GetRefCount(), 2u);
		Moved.SafeRelease();
		EXPECT_EQ(First.GetRefCount(), 1u);
		EXPECT_EQ(FCountedResource::Live, 1);
	}
	EXPECT_EQ(FCountedResource::Live, 0);
}

TEST(RefCountingTest, ManualAddRefAndRelease)
{
	FCountedResource::Live = 0;
	FCountedResource* Resource = new FCountedResource();
	EXPECT_EQ(Resource->AddRef(), 1u);
	EXPECT_EQ(Resource->AddRef(), 2u);
	EXPECT_EQ(Resource->Release(), 1u);
	EXPECT_EQ(FCountedResource::Live, 1);
	EXPECT_EQ(Resource->Release(), 0u);
	EXPECT_EQ(FCountedResource::Live, 0);
}
