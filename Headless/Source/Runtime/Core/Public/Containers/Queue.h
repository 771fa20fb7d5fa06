// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/UnrealTemplate.h"

#include <atomic>
#include <utility>

/** Who may use a queue concurrently. */
enum class EQueueMode
{
	/** Any number of producer threads, one consumer thread. */
	Mpsc,
	/** One producer thread, one consumer thread. */
	Spsc,
	/** One thread only. */
	SingleThreaded,
};

/**
 * An unbounded first-in first-out queue, lock-free for its mode. Enqueue may be called by the
 * producer(s); Dequeue, Peek, Pop, Empty and IsEmpty only by the single consumer.
 */
template <typename T, EQueueMode Mode = EQueueMode::Spsc>
class TQueue
{
public:
	using FElementType = T;

	TQueue()
	{
		// The tail always points at a sentinel node whose item is unused; the head is the newest node.
		FNode* Sentinel = new FNode();
		Head.store(Sentinel, std::memory_order_relaxed);
		Tail = Sentinel;
	}

	TQueue(const TQueue&) = delete;
	TQueue& operator=(const TQueue&) = delete;

	~TQueue()
	{
		while (Tail != nullptr)
		{
			FNode* Node = Tail;
			Tail = Tail->NextNode.load(std::memory_order_relaxed);
			delete Node;
		}
	}

	/** Adds an item at the end. Always succeeds; returns true. */
	bool Enqueue(const FElementType& Item) { return Link(new FNode(Item)); }
	bool Enqueue(FElementType&& Item) { return Link(new FNode(MoveTemp(Item))); }

	/** Moves the oldest item into OutItem and removes it; false if the queue is empty. */
	bool Dequeue(FElementType& OutItem)
	{
		FNode* Popped = Tail->NextNode.load(std::memory_order_acquire);
		if (Popped == nullptr)
		{
			return false;
		}
		OutItem = MoveTemp(Popped->Item);
		FNode* OldTail = Tail;
		Tail = Popped;
		// The popped node becomes the sentinel; its item has been moved out, so reset it now.
		Tail->Item = FElementType();
		delete OldTail;
		return true;
	}

	/** Removes the oldest item; false if the queue is empty. */
	bool Pop()
	{
		FNode* Popped = Tail->NextNode.load(std::memory_order_acquire);
		if (Popped == nullptr)
		{
			return false;
		}
		FNode* OldTail = Tail;
		Tail = Popped;
		Tail->Item = FElementType();
		delete OldTail;
		return true;
	}

	/** Removes all items. */
	void Empty()
	{
		while (Pop())
		{
		}
	}

	bool IsEmpty() const { return Tail->NextNode.load(std::memory_order_acquire) == nullptr; }

	/** Copies the oldest item without removing it; false if the queue is empty. */
	bool Peek(FElementType& OutItem) const
	{
		FNode* Next = Tail->NextNode.load(std::memory_order_acquire);
		if (Next == nullptr)
		{
			return false;
		}
		OutItem = Next->Item;
		return true;
	}

	/** Pointer to the oldest item, or null if the queue is empty. */
	FElementType* Peek()
	{
		FNode* Next = Tail->NextNode.load(std::memory_order_acquire);
		return Next ? &Next->Item : nullptr;
	}
	const FElementType* Peek() const { return const_cast<TQueue*>(this)->Peek(); }

private:
	struct FNode
	{
		std::atomic<FNode*> NextNode{nullptr};
		FElementType Item;

		FNode()
			: Item()
		{
		}
		explicit FNode(const FElementType& InItem)
			: Item(InItem)
		{
		}
		explicit FNode(FElementType&& InItem)
			: Item(MoveTemp(InItem))
		{
		}
	};

	bool Link(FNode* NewNode)
	{
		FNode* OldHead;
		if constexpr (Mode == EQueueMode::Mpsc)
		{
			OldHead = Head.exchange(NewNode, std::memory_order_acq_rel);
		}
		else
		{
			OldHead = Head.load(std::memory_order_relaxed);
			Head.store(NewNode, std::memory_order_relaxed);
		}
		// Publishing the link is what makes the fully constructed node visible to the consumer.
		OldHead->NextNode.store(NewNode, std::memory_order_release);
		return true;
	}

	/** Newest node; written by producers. */
	alignas(64) std::atomic<FNode*> Head;
	/** Sentinel before the oldest item; owned by the consumer. */
	alignas(64) FNode* Tail;
};
