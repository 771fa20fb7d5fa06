// Copyright Orvane. All Rights Reserved.

#include "Containers/Queue.h"
#include "Templates/UniquePtr.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST(QueueTest, FirstInFirstOut)
{
	TQueue<int32> Queue;
	EXPECT_TRUE(Queue.IsEmpty());
	int32 Out = -1;
	EXPECT_FALSE(Queue.Dequeue(Out));
	EXPECT_EQ(Out, -1);
	EXPECT_EQ(Queue.Peek(), nullptr);
	EXPECT_TRUE(Queue.Enqueue(1));
	EXPECT_TRUE(Queue.Enqueue(2));
	EXPECT_TRUE(Queue.Enqueue(3));
	EXPECT_FALSE(Queue.IsEmpty());
	ASSERT_NE(Queue.Peek(), nullptr);
	EXPECT_EQ(*Queue.Peek(), 1);
	int32 Peeked = 0;
	EXPECT_TRUE(Queue.Peek(Peeked));
	EXPECT_EQ(Peeked, 1);
	EXPECT_TRUE(Queue.Dequeue(Out));
	EXPECT_EQ(Out, 1);
	EXPECT_TRUE(Queue.Pop());
	EXPECT_TRUE(Queue.Dequeue(Out));
	EXPECT_EQ(Out, 3);
	EXPECT_TRUE(Queue.IsEmpty());
	EXPECT_FALSE(Queue.Pop());
	Queue.Enqueue(4);
	Queue.Enqueue(5);
	Queue.Empty();
	EXPECT_TRUE(Queue.IsEmpty());
}

TEST(QueueTest, MoveOnlyItems)
{
	TQueue<TUniquePtr<int32>, EQueueMode::Mpsc> Queue;
	Queue.Enqueue(MakeUnique<int32>(7));
	TUniquePtr<int32> Out;
	ASSERT_TRUE(Queue.Dequeue(Out));
	ASSERT_TRUE(Out.IsValid());
	EXPECT_EQ(*Out, 7);
}

TEST(QueueTest, SingleProducerSingleConsumerAcrossThreads)
{
	constexpr int32 NumItems = 200000;
	TQueue<int32, EQueueMode::Spsc> Queue;
	std::thread Producer(
		[&Queue]()
		{
			for (int32 I = 0; I < NumItems; ++I)
			{
				Queue.Enqueue(I);
			}
		});
	int32 Expected = 0;
	int64 Sum = 0;
	bool bInOrder = true;
	while (Expected < NumItems)
	{
		int32 Item;
		if (Queue.Dequeue(Item))
		{
			bInOrder = bInOrder && Item == Expected;
			Sum += Item;
			++Expected;
		}
		else
		{
			std::this_thread::yield();
		}
	}
	Producer.join();
	EXPECT_TRUE(bInOrder);
	EXPECT_EQ(Sum, static_cast<int64>(NumItems) * (NumItems - 1) / 2);
	EXPECT_TRUE(Queue.IsEmpty());
}

TEST(QueueTest, MultipleProducersSingleConsumer)
{
	constexpr int32 NumProducers = 4;
	constexpr int32 ItemsPerProducer = 50000;
	TQueue<int32, EQueueMode::Mpsc> Queue;
	std::vector<std::thread> Producers;
	for (int32 P = 0; P < NumProducers; ++P)
	{
		Producers.emplace_back(
			[&Queue, P]()
			{
				for (int32 I = 0; I < ItemsPerProducer; ++I)
				{
					Queue.Enqueue(P * ItemsPerProducer + I);
				}
			});
	}
	// Items from one producer must arrive in that producer's order.
	std::vector<int32> LastSeen(NumProducers, -1);
	bool bPerProducerOrder = true;
	int32 Received = 0;
	while (Received < NumProducers * ItemsPerProducer)
	{
		int32 Item;
		if (Queue.Dequeue(Item))
		{
			const int32 Producer = Item / ItemsPerProducer;
			const int32 Index = Item % ItemsPerProducer;
			bPerProducerOrder = bPerProducerOrder && Index == LastSeen[Producer] + 1;
			LastSeen[Producer] = Index;
			++Received;
		}
		else
		{
			std::this_thread::yield();
		}
	}
	for (std::thread& Producer : Producers)
	{
		Producer.join();
	}
	EXPECT_TRUE(bPerProducerOrder);
	for (int32 P = 0; P < NumProducers; ++P)
	{
		EXPECT_EQ(LastSeen[P], ItemsPerProducer - 1);
	}
	EXPECT_TRUE(Queue.IsEmpty());
}
