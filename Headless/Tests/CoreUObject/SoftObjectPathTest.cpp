// Copyright Orvane. All Rights Reserved.

#include "UObject/SoftObjectPath.h"
#include "Containers/Map.h"
#include "EngineTestPrinters.h"
#include "UObject/PropertyPortFlags.h"
#include "UObject/SoftObjectPtr.h"
#include "UObject/TopLevelAssetPath.h"

#include <gtest/gtest.h>

namespace
{
	std::string Parsed(const TCHAR* Text)
	{
		return ToUtf8(FSoftObjectPath(Text).ToString());
	}

	std::string Exported(const FSoftObjectPath& Path, int32 PortFlags)
	{
		FString Value;
		EXPECT_TRUE(Path.ExportTextItem(Value, FSoftObjectPath(), nullptr, PortFlags, nullptr));
		return ToUtf8(Value);
	}
} // namespace

TEST(FTopLevelAssetPathTest, PartsAndText)
{
	const FTopLevelAssetPath Path(TEXT("/Game/Orvane/P.P"));
	EXPECT_TRUE(Path.IsValid());
	EXPECT_EQ(ToUtf8(Path.GetPackageName().ToString()), "/Game/Orvane/P");
	EXPECT_EQ(ToUtf8(Path.GetAssetName().ToString()), "P");
	EXPECT_EQ(ToUtf8(Path.ToString()), "/Game/Orvane/P.P");
	EXPECT_EQ(ToUtf8(Path.ToFName().ToString()), "/Game/Orvane/P.P");

	const FTopLevelAssetPath Class(FName(TEXT("/Script/Engine")), FName(TEXT("Actor")));
	EXPECT_EQ(ToUtf8(Class.ToString()), "/Script/Engine.Actor");
	EXPECT_EQ(Class, FTopLevelAssetPath(TEXT("/script/engine.actor")));
	EXPECT_EQ(GetTypeHash(Class), GetTypeHash(FTopLevelAssetPath(TEXT("/Script/Engine.Actor"))));

	const FTopLevelAssetPath Package(TEXT("/Game/Orvane/P"));
	EXPECT_TRUE(Package.IsValid());
	EXPECT_TRUE(Package.GetAssetName().IsNone());
	EXPECT_EQ(ToUtf8(Package.ToString()), "/Game/Orvane/P");
}

TEST(FTopLevelAssetPathTest, RejectsWhatIsNotATopLevelPath)
{
	FTopLevelAssetPath Path(TEXT("/Game/A.A"));
	EXPECT_FALSE(Path.TrySetPath(TEXT("/Game/Map.Map:PersistentLevel.Actor")));
	EXPECT_TRUE(Path.IsNull());
	EXPECT_FALSE(Path.TrySetPath(TEXT("Actor")));
	EXPECT_FALSE(Path.TrySetPath(TEXT("")));
	EXPECT_FALSE(Path.TrySetPath(TEXT("/Game/A.")));
	EXPECT_FALSE(Path.TrySetPath(FName(), FName(TEXT("A"))));
	EXPECT_TRUE(Path.IsNull());
	EXPECT_EQ(ToUtf8(Path.ToString()), "");
}

TEST(FTopLevelAssetPathTest, ExportAndImportText)
{
	const FTopLevelAssetPath Path(TEXT("/Script/Engine.Actor"));
	FString Value;
	EXPECT_TRUE(Path.ExportTextItem(Value, FTopLevelAssetPath(), nullptr, PPF_None, nullptr));
	EXPECT_EQ(ToUtf8(Value), "/Script/Engine.Actor");

	FTopLevelAssetPath Imported;
	const TCHAR* Buffer = TEXT("\"/Script/Engine.Actor\",Next");
	EXPECT_TRUE(Imported.ImportTextItem(Buffer, PPF_Delimited, nullptr, nullptr));
	EXPECT_EQ(Imported, Path);
	EXPECT_EQ(ToUtf8(Buffer), ",Next");

	Buffer = TEXT("None");
	EXPECT_TRUE(Imported.ImportTextItem(Buffer, PPF_None, nullptr, nullptr));
	EXPECT_TRUE(Imported.IsNull());
}

TEST(FSoftObjectPathTest, ParsesAssetAndSubObjectPaths)
{
	const FSoftObjectPath Asset(TEXT("/Game/Orvane/P.P"));
	EXPECT_TRUE(Asset.IsValid());
	EXPECT_FALSE(Asset.IsNull());
	EXPECT_TRUE(Asset.IsAsset());
	EXPECT_FALSE(Asset.IsSubobject());
	EXPECT_EQ(ToUtf8(Asset.ToString()), "/Game/Orvane/P.P");
	EXPECT_EQ(ToUtf8(Asset.GetAssetPathString()), "/Game/Orvane/P.P");
	EXPECT_EQ(ToUtf8(Asset.GetLongPackageName()), "/Game/Orvane/P");
	EXPECT_EQ(ToUtf8(Asset.GetLongPackageFName().ToString()), "/Game/Orvane/P");
	EXPECT_EQ(ToUtf8(Asset.GetAssetName()), "P");
	EXPECT_EQ(ToUtf8(Asset.GetSubPathString()), "");

	const FSoftObjectPath Actor(TEXT("/Game/Map.Map:PersistentLevel.Actor"));
	EXPECT_TRUE(Actor.IsSubobject());
	EXPECT_FALSE(Actor.IsAsset());
	EXPECT_EQ(ToUtf8(Actor.GetAssetPathString()), "/Game/Map.Map");
	EXPECT_EQ(ToUtf8(Actor.GetSubPathString()), "PersistentLevel.Actor");
	EXPECT_EQ(ToUtf8(Actor.ToString()), "/Game/Map.Map:PersistentLevel.Actor");
	EXPECT_EQ(ToUtf8(Actor.GetWithoutSubPath().ToString()), "/Game/Map.Map");

	// The older dotted form of a sub-object keeps the rest as the sub-object path.
	EXPECT_EQ(Parsed(TEXT("/Game/Map.Map.PersistentLevel")), "/Game/Map.Map:PersistentLevel");
}

TEST(FSoftObjectPathTest, PackagePathStaysAPackagePath)
{
	const FSoftObjectPath Package(TEXT("/Game/Dir/Asset"));
	EXPECT_TRUE(Package.IsValid());
	EXPECT_FALSE(Package.IsAsset());
	EXPECT_EQ(ToUtf8(Package.ToString()), "/Game/Dir/Asset");
	EXPECT_EQ(ToUtf8(Package.GetLongPackageName()), "/Game/Dir/Asset");
	EXPECT_EQ(ToUtf8(Package.GetAssetName()), "");
}

TEST(FSoftObjectPathTest, ExportTextFormsAndNoneAreUnderstood)
{
	EXPECT_EQ(Parsed(TEXT("/Script/LiveLink.LiveLinkPreset'/Game/Orvane/P.P'")), "/Game/Orvane/P.P");
	EXPECT_EQ(Parsed(TEXT("LiveLinkPreset'/Game/Orvane/P.P'")), "/Game/Orvane/P.P");
	EXPECT_EQ(Parsed(TEXT("\"/Game/Orvane/P.P\"")), "/Game/Orvane/P.P");
	EXPECT_EQ(Parsed(TEXT("  /Game/Orvane/P.P  ")), "/Game/Orvane/P.P");
	EXPECT_TRUE(FSoftObjectPath(TEXT("None")).IsNull());
	EXPECT_TRUE(FSoftObjectPath(TEXT("")).IsNull());
	EXPECT_TRUE(FSoftObjectPath(nullptr).IsNull());
}

TEST(FSoftObjectPathTest, ShortNamesAreNotPaths)
{
	FSoftObjectPath Path(TEXT("/Game/A.A"));
	Path.SetPath(TEXT("JustAName"));
	EXPECT_TRUE(Path.IsNull());
	EXPECT_EQ(ToUtf8(Path.ToString()), "");
	Path.SetPath(TEXT("/Game/Map.Map:"));
	EXPECT_TRUE(Path.IsNull());
}

TEST(FSoftObjectPathTest, AssignmentResetAndComparison)
{
	FSoftObjectPath Path;
	EXPECT_TRUE(Path.IsNull());
	EXPECT_EQ(ToUtf8(Path.ToString()), "");
	Path = FString(TEXT("/Game/A.A"));
	EXPECT_EQ(ToUtf8(Path.ToString()), "/Game/A.A");
	Path = FTopLevelAssetPath(TEXT("/Game/B.B"));
	EXPECT_EQ(ToUtf8(Path.ToString()), "/Game/B.B");
	Path = nullptr;
	EXPECT_TRUE(Path.IsNull());

	const FSoftObjectPath Built(FTopLevelAssetPath(TEXT("/Game/Map.Map")), TEXT("PersistentLevel.Actor"));
	EXPECT_EQ(Built, FSoftObjectPath(TEXT("/Game/Map.Map:PersistentLevel.Actor")));
	EXPECT_EQ(Built, FSoftObjectPath(TEXT("/game/map.map:persistentlevel.actor")));
	EXPECT_NE(Built, FSoftObjectPath(TEXT("/Game/Map.Map")));
	EXPECT_EQ(GetTypeHash(Built), GetTypeHash(FSoftObjectPath(TEXT("/Game/Map.Map:PersistentLevel.Actor"))));

	FSoftObjectPath ToReset(TEXT("/Game/A.A:Sub"));
	ToReset.Reset();
	EXPECT_TRUE(ToReset.IsNull());
	EXPECT_EQ(ToReset, FSoftObjectPath());

	TMap<FSoftObjectPath, int32> ByPath;
	ByPath.Add(FSoftObjectPath(TEXT("/Game/A.A")), 1);
	ByPath.Add(FSoftObjectPath(TEXT("/Game/B.B")), 2);
	ASSERT_NE(ByPath.Find(FSoftObjectPath(TEXT("/Game/A.A"))), nullptr);
	EXPECT_EQ(*ByPath.Find(FSoftObjectPath(TEXT("/Game/A.A"))), 1);
}

TEST(FSoftObjectPathTest, ExportTextItemWritesNoneForNullAndQuotesWhenDelimited)
{
	EXPECT_EQ(Exported(FSoftObjectPath(TEXT("/Game/A.A")), PPF_None), "/Game/A.A");
	EXPECT_EQ(Exported(FSoftObjectPath(TEXT("/Game/A.A")), PPF_Delimited), "\"/Game/A.A\"");
	EXPECT_EQ(Exported(FSoftObjectPath(), PPF_None), "None");
	EXPECT_EQ(Exported(FSoftObjectPath(), PPF_Delimited), "None");
}

TEST(FSoftObjectPathTest, ImportTextItemReadsWhatExportWrites)
{
	for (const TCHAR* Source : {TEXT("/Game/A.A"), TEXT("/Game/Map.Map:PersistentLevel.Actor"), TEXT("")})
	{
		const FSoftObjectPath Original(Source);
		for (const int32 PortFlags : {static_cast<int32>(PPF_None), static_cast<int32>(PPF_Delimited)})
		{
			FString Text;
			Original.ExportTextItem(Text, FSoftObjectPath(), nullptr, PortFlags, nullptr);
			Text += TEXT(")");
			FSoftObjectPath Imported(TEXT("/Game/Other.Other"));
			const TCHAR* Buffer = *Text;
			EXPECT_TRUE(Imported.ImportTextItem(Buffer, PortFlags, nullptr, nullptr)) << ToUtf8(Text);
			EXPECT_EQ(Imported, Original) << ToUtf8(Text);
			EXPECT_EQ(ToUtf8(Buffer), ")");
		}
	}

	FSoftObjectPath Imported;
	const TCHAR* Buffer = TEXT("/Script/Engine.Blueprint'/Game/BP.BP',");
	EXPECT_TRUE(Imported.ImportTextItem(Buffer, PPF_None, nullptr, nullptr));
	EXPECT_EQ(ToUtf8(Imported.ToString()), "/Game/BP.BP");
	EXPECT_EQ(ToUtf8(Buffer), ",");

	Buffer = TEXT("\"/Game/Unclosed");
	EXPECT_FALSE(Imported.ImportTextItem(Buffer, PPF_Delimited, nullptr, nullptr));
	EXPECT_EQ(ToUtf8(Imported.ToString()), "/Game/BP.BP");
}

TEST(FSoftObjectPathTest, SoftPointersFromPathsAreNullOrPending)
{
	const FSoftObjectPtr Null;
	EXPECT_TRUE(Null.IsNull());
	EXPECT_EQ(ToUtf8(Null.ToString()), "");

	const FSoftObjectPtr FromPath(FSoftObjectPath(TEXT("/Game/Orvane/P.P")));
	EXPECT_FALSE(FromPath.IsNull());
	EXPECT_EQ(ToUtf8(FromPath.ToString()), "/Game/Orvane/P.P");
	EXPECT_EQ(ToUtf8(FromPath.GetLongPackageName()), "/Game/Orvane/P");
	EXPECT_EQ(ToUtf8(FromPath.GetAssetName()), "P");
	EXPECT_EQ(FromPath, FSoftObjectPtr(FSoftObjectPath(TEXT("/Game/Orvane/P.P"))));
	EXPECT_NE(FromPath, Null);
}
