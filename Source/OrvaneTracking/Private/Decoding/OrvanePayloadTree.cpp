// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvanePayloadTree.h"

#include "CborReader.h"
#include "HAL/UnrealMemory.h"
#include "Math/UnrealMathUtility.h"
#include "Misc/CString.h"
#include "Serialization/MemoryReader.h"

namespace UE::OrvaneTracking::OpenTrackIO::Private
{
	namespace
	{
		/** Values one payload may hold. A full sample has a few hundred; this bounds what a hostile one costs. */
		constexpr int32 MaxNodes = 1 << 16;
	} // namespace

	/** Fills an FPayloadTree from a CBOR stream, one item at a time. */
	class FCborTreeBuilder
	{
	public:
		FCborTreeBuilder(FPayloadTree& InTree, FCborReader& InReader, int32 InMaxDepth)
			: Tree(InTree)
			, Reader(InReader)
			, MaxDepth(InMaxDepth)
		{
		}

		bool ReadRoot()
		{
			FCborContext Context;
			if (!Reader.ReadNext(Context) || Context.MajorType() != ECborCode::Map || Context.IsError())
			{
				return false;
			}
			Tree.Nodes.AddDefaulted_GetRef().Type = EPayloadValueType::Object;
			if (!ReadItems(0, true, 1))
			{
				return false;
			}
			FCborContext End;
			return !Reader.ReadNext(End) && End.RawCode() == ECborCode::StreamEnd;
		}

	private:
		/** Appends a node as the last item of Parent; returns its index, or INDEX_NONE when the tree is full. */
		int32 AddItem(int32 Parent, EPayloadValueType Type, int32 NameStart, int32 NameLength)
		{
			if (Tree.Nodes.Num() >= MaxNodes)
			{
				return INDEX_NONE;
			}
			const int32 Index = Tree.Nodes.AddDefaulted();
			FPayloadNode& Node = Tree.Nodes[Index];
			Node.Type = Type;
			Node.NameStart = NameStart;
			Node.NameLength = NameLength;
			FPayloadNode& ParentNode = Tree.Nodes[Parent];
			if (ParentNode.LastChild == INDEX_NONE)
			{
				ParentNode.FirstChild = Index;
			}
			else
			{
				Tree.Nodes[ParentNode.LastChild].NextSibling = Index;
			}
			ParentNode.LastChild = Index;
			++ParentNode.NumChildren;
			return Index;
		}

		/** Copies the bytes of a definite text string into the tree's text; returns where they start. */
		int32 AddText(const FCborContext& Context)
		{
			const int32 Start = Tree.Text.Num();
			Tree.Text.Append(Context.AsCString(), int32(Context.AsLength()));
			return Start;
		}

		/** Reads the items (or members) of the container node Parent, up to the break that ends it. */
		bool ReadItems(int32 Parent, bool bMembers, int32 Depth)
		{
			FCborContext Item;
			while (Reader.ReadNext(Item))
			{
				if (Item.IsBreak())
				{
					return true;
				}
				int32 NameStart = 0;
				int32 NameLength = 0;
				bool bKeep = true;
				if (bMembers)
				{
					if (Item.MajorType() == ECborCode::TextString && !Item.IsContainer() && !Item.IsError())
					{
						NameLength = int32(Item.AsLength());
						NameStart = AddText(Item);
					}
					else
					{
						bKeep = false;
						if (!SkipItem(Item, Depth + 1))
						{
							return false;
						}
					}
					if (!Reader.ReadNext(Item) || Item.IsBreak())
					{
						return false;
					}
				}
				const bool bRead =
					bKeep ? ReadItem(Item, Parent, NameStart, NameLength, Depth + 1) : SkipItem(Item, Depth + 1);
				if (!bRead)
				{
					return false;
				}
			}
			return false;
		}

		bool ReadItem(FCborContext& Context, int32 Parent, int32 NameStart, int32 NameLength, int32 Depth)
		{
			if (Depth > MaxDepth || Context.IsError())
			{
				return false;
			}
			switch (Context.MajorType())
			{
				case ECborCode::Uint:
					return AddNumber(Parent, NameStart, NameLength, double(Context.AsUInt()));
				case ECborCode::Int:
					return AddNumber(Parent, NameStart, NameLength, double(Context.AsInt()));
				case ECborCode::ByteString:
					return (!Context.IsContainer() || SkipItem(Context, Depth)) &&
						   AddItem(Parent, EPayloadValueType::Null, NameStart, NameLength) != INDEX_NONE;
				case ECborCode::TextString:
					return ReadText(Context, Parent, NameStart, NameLength);
				case ECborCode::Array:
				case ECborCode::Map:
				{
					const bool bMap = Context.MajorType() == ECborCode::Map;
					const int32 Index = AddItem(
						Parent, bMap ? EPayloadValueType::Object : EPayloadValueType::Array, NameStart, NameLength);
					return Index != INDEX_NONE && ReadItems(Index, bMap, Depth);
				}
				case ECborCode::Tag:
				{
					// A tag only qualifies the item after it; the item is what the sample holds.
					FCborContext Tagged;
					return Reader.ReadNext(Tagged) && !Tagged.IsBreak() &&
						   ReadItem(Tagged, Parent, NameStart, NameLength, Depth + 1);
				}
				case ECborCode::Prim:
					return ReadPrimitive(Context, Parent, NameStart, NameLength);
				default:
					return false;
			}
		}

		bool AddNumber(int32 Parent, int32 NameStart, int32 NameLength, double Number)
		{
			const int32 Index = AddItem(Parent, EPayloadValueType::Number, NameStart, NameLength);
			if (Index == INDEX_NONE)
			{
				return false;
			}
			Tree.Nodes[Index].Number = Number;
			return true;
		}

		bool ReadText(FCborContext& Context, int32 Parent, int32 NameStart, int32 NameLength)
		{
			const int32 Index = AddItem(Parent, EPayloadValueType::String, NameStart, NameLength);
			if (Index == INDEX_NONE)
			{
				return false;
			}
			const int32 Start = Tree.Text.Num();
			if (!Context.IsContainer())
			{
				AddText(Context);
			}
			else
			{
				// An indefinite string is a run of definite chunks up to a break.
				FCborContext Chunk;
				bool bEnded = false;
				while (!bEnded)
				{
					if (!Reader.ReadNext(Chunk))
					{
						return false;
					}
					bEnded = Chunk.IsBreak();
					if (!bEnded)
					{
						if (Chunk.MajorType() != ECborCode::TextString || Chunk.IsContainer() || Chunk.IsError())
						{
							return false;
						}
						AddText(Chunk);
					}
				}
			}
			Tree.Nodes[Index].TextStart = Start;
			Tree.Nodes[Index].TextLength = Tree.Text.Num() - Start;
			return true;
		}

		bool ReadPrimitive(FCborContext& Context, int32 Parent, int32 NameStart, int32 NameLength)
		{
			switch (Context.AdditionalValue())
			{
				case ECborCode::False:
				case ECborCode::True:
				{
					const int32 Index = AddItem(Parent, EPayloadValueType::Boolean, NameStart, NameLength);
					if (Index == INDEX_NONE)
					{
						return false;
					}
					Tree.Nodes[Index].bBoolean = Context.AdditionalValue() == ECborCode::True;
					return true;
				}
				case ECborCode::Value_2Bytes:
				case ECborCode::Value_4Bytes:
					return AddNumber(Parent, NameStart, NameLength, double(Context.AsFloat()));
				case ECborCode::Value_8Bytes:
					return AddNumber(Parent, NameStart, NameLength, Context.AsDouble());
				default:
					return AddItem(Parent, EPayloadValueType::Null, NameStart, NameLength) != INDEX_NONE;
			}
		}

		/** Reads past the item that starts with Context without keeping it. */
		bool SkipItem(FCborContext& Context, int32 Depth)
		{
			if (Depth > MaxDepth || Context.IsError())
			{
				return false;
			}
			if (Context.MajorType() == ECborCode::Tag)
			{
				FCborContext Tagged;
				return Reader.ReadNext(Tagged) && !Tagged.IsBreak() && SkipItem(Tagged, Depth + 1);
			}
			if (!Context.IsContainer())
			{
				return true;
			}
			FCborContext Item;
			while (Reader.ReadNext(Item))
			{
				if (Item.IsBreak())
				{
					return true;
				}
				if (!SkipItem(Item, Depth + 1))
				{
					return false;
				}
			}
			return false;
		}

		FPayloadTree& Tree;
		FCborReader& Reader;
		const int32 MaxDepth;
	};

	const FPayloadNode* FPayloadTree::FindMember(const FPayloadNode& Object, const char* Name) const
	{
		const int32 NameLength = FCStringAnsi::Strlen(Name);
		const FPayloadNode* Found = nullptr;
		for (int32 Index = Object.FirstChild; Index != INDEX_NONE; Index = Nodes[Index].NextSibling)
		{
			const FPayloadNode& Member = Nodes[Index];
			if (Member.NameLength == NameLength &&
				FMemory::Memcmp(Text.GetData() + Member.NameStart, Name, NameLength) == 0)
			{
				Found = &Member;
			}
		}
		return Found;
	}

	bool FPayloadTree::ReadCbor(TArrayView<const uint8> Payload, int32 MaxDepth)
	{
		Nodes.Reset();
		Text.Reset();
		// Most items take a few bytes, so these rarely grow.
		Nodes.Reserve(FMath::Min(Payload.Num() / 4 + 1, 1024));
		Text.Reserve(FMath::Min(Payload.Num(), 16 * 1024));

		FMemoryReaderView Archive(Payload);
		FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
		return FCborTreeBuilder(*this, Reader, MaxDepth).ReadRoot();
	}
} // namespace UE::OrvaneTracking::OpenTrackIO::Private
