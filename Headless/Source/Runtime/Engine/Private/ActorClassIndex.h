// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

class AActor;
class UClass;

namespace UE::Engine::Private
{
	/**
	 * The actors of one level, grouped by their exact class. Each group keeps its actors in the order they were
	 * added; a removed actor leaves a hole that is closed once holes make up half of the group, so adding and
	 * removing stay cheap. Gathering the actors of a class visits only the groups of that class and its
	 * subclasses, merged back into the order the actors were added in.
	 */
	class FActorClassIndex
	{
	public:
		/** Adds an actor at the end of its class's group. */
		void Add(AActor* Actor);

		/** Removes an actor; does nothing if it is not in the index. */
		void Remove(AActor* Actor);

		/** Appends the actors of BaseClass and its subclasses to OutActors, in the order they were added. */
		void Gather(const UClass* BaseClass, TArray<AActor*>& OutActors) const;

		/** The number of actors in the index. */
		int32 Num() const { return NumActors; }

	private:
		struct FGroup
		{
			/** Actors in the order they were added; null entries are holes left by removals. */
			TArray<AActor*> Actors;
			int32 NumHoles = 0;
		};

		/** Closes the holes of a group and renumbers its actors' slots. */
		static void Compact(FGroup& Group);

		TMap<const UClass*, FGroup> Groups;
		uint64 NextSequence = 1;
		int32 NumActors = 0;
	};

	/** Counts index entries visited by Gather (see GetNumActorIndexEntriesVisited). */
	void AddActorIndexEntriesVisited(uint64 Count);
} // namespace UE::Engine::Private
