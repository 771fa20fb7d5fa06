// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "CoreTypes.h"

namespace UE::OrvaneTracking::OpenTrackIO::Private
{
	/** The kinds of value a sample is made of, whatever its encoding. */
	enum class EPayloadValueType : uint8
	{
		Null,
		Boolean,
		Number,
		String,
		Array,
		Object,
	};

	/** One value of an FPayloadTree. The items of an array or object are chained through NextSibling. */
	struct FPayloadNode
	{
		EPayloadValueType Type = EPayloadValueType::Null;
		bool bBoolean = false;
		double Number = 0.0;
		/** Where the node's member name (inside an object) lies in the tree's text. */
		int32 NameStart = 0;
		int32 NameLength = 0;
		/** Where a string's UTF-8 bytes lie in the tree's text. */
		int32 TextStart = 0;
		int32 TextLength = 0;
		int32 NumChildren = 0;
		int32 FirstChild = INDEX_NONE;
		int32 LastChild = INDEX_NONE;
		int32 NextSibling = INDEX_NONE;
	};

	/**
	 * A decoded CBOR sample held in two flat arrays, nodes and text, instead of a tree of shared objects: a
	 * sample of a hundred values costs two allocations rather than hundreds. Node 0 is the root object.
	 */
	class FPayloadTree
	{
	public:
		const FPayloadNode& GetNode(int32 Index) const { return Nodes[Index]; }
		const FPayloadNode& GetRoot() const { return Nodes[0]; }
		int32 IndexOf(const FPayloadNode& Node) const { return int32(&Node - Nodes.GetData()); }

		/** The last member of Object named Name (later members replace earlier ones, as in JSON), or null. */
		const FPayloadNode* FindMember(const FPayloadNode& Object, const char* Name) const;

		/** The UTF-8 bytes of a string node. */
		TArrayView<const char> GetText(const FPayloadNode& Node) const
		{
			return TArrayView<const char>(Text.GetData() + Node.TextStart, Node.TextLength);
		}

		/**
		 * Reads a CBOR payload: exactly one map, nothing after it, nested at most MaxDepth deep. Byte strings,
		 * undefined and unassigned simple values become null; map members whose key is not text are passed over;
		 * tags are read through.
		 * @return false when the payload is malformed
		 */
		bool ReadCbor(TArrayView<const uint8> Payload, int32 MaxDepth);

	private:
		friend class FCborTreeBuilder;

		TArray<FPayloadNode> Nodes;
		TArray<char> Text;
	};
} // namespace UE::OrvaneTracking::OpenTrackIO::Private
