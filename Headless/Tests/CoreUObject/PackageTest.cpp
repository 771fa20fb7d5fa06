// Copyright Orvane. All Rights Reserved.

#include "UObject/Package.h"
#include "../../Source/Runtime/CoreUObject/Private/Tests/ReflectionTestTypes.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformFileManager.h"
#include "Internationalization/Text.h"
#include "Misc/FileHelper.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Templates/Casts.h"
#include "Templates/SubclassOf.h"
#include "UObject/Class.h"
#include "UObject/SavePackage.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/SoftObjectPtr.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

#include "PackageTestUtils.h"
#include <cstdlib>

#include <gtest/gtest.h>

namespace
{
	using PackageTestUtils::FileOf;
	using PackageTestUtils::Save;
	using PackageTestUtils::Unload;

	/** Records what is logged while it is alive. */
	class FLogCapture : public FOutputDevice
	{
	public:
		FLogCapture() { GLog->AddOutputDevice(this); }
		~FLogCapture() { GLog->RemoveOutputDevice(this); }

		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			Lines.Add(FString(V));
		}

		bool Contains(const TCHAR* Text) const
		{
			for (const FString& Line : Lines)
			{
				if (Line.Contains(Text, ESearchCase::CaseSensitive))
				{
					return true;
				}
			}
			return false;
		}

		TArray<FString> Lines;
	};

	/** A throwaway project under /tmp whose Content folder is "/Game/". */
	class FPackageTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/PackageTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
			const FString ProjectDir = TempDir / TEXT("Proj/");
			ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("{}"), *(ProjectDir / TEXT("Proj.uproject"))));
			FPaths::SetProjectFilePath(ProjectDir / TEXT("Proj.uproject"));
		}

		void TearDown() override
		{
			for (const TCHAR* Name : {TEXT("/Game/Orvane/P"), TEXT("/Game/Orvane/Q"), TEXT("/Game/Orvane/Other"),
					 TEXT("/Game/Orvane/ReadOnly")})
			{
				Unload(Name);
			}
			FPaths::SetProjectFilePath(FString());
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		/** Every saved property of the object in its text form, by name. */
		static TMap<FString, FString> ExportAll(UObject* Object)
		{
			TMap<FString, FString> Values;
			for (TFieldIterator<FProperty> It(Object->GetClass()); It; ++It)
			{
				if (!It->ShouldSerializeValue())
				{
					continue;
				}
				for (int32 Index = 0; Index < It->ArrayDim; ++Index)
				{
					FString Value;
					It->ExportTextItem_Direct(
						Value, It->ContainerPtrToValuePtr<void>(Object, Index), nullptr, Object, PPF_None);
					Values.Add(FString::Printf(TEXT("%s[%d]"), *It->GetName(), Index), Value);
				}
			}
			return Values;
		}

		FString TempDir;
	};

	UReflectionTestObject* NewAsset(const TCHAR* PackageName)
	{
		UPackage* Package = CreatePackage(PackageName);
		return NewObject<UReflectionTestObject>(
			Package, FName(*FPackageName::GetShortName(PackageName)), RF_Public | RF_Standalone | RF_Transactional);
	}

	/** Gives every kind of property a value that differs from its default. */
	void FillEveryKind(
		UReflectionTestObject* Asset, UObject* SamePackageObject, UReflectionTestBase* OtherPackageObject)
	{
		Asset->BaseValue = -12;
		Asset->TransientValue = 99;
		Asset->IntValue = 123456;
		Asset->Int8Value = -8;
		Asset->Int16Value = -1600;
		Asset->Int64Value = -6400000000000LL;
		Asset->ByteValue = 200;
		Asset->UInt16Value = 60000;
		Asset->UInt32Value = 4000000000u;
		Asset->UInt64Value = 18000000000000000000ull;
		Asset->FloatValue = 1.25f;
		// Floating-point values are written in their export text form, which keeps six decimals.
		Asset->DoubleValue = -2.5;
		Asset->bNativeBool = true;
		Asset->bBitA = 1;
		Asset->bBitB = 0;
		Asset->bBitC = 1;
		Asset->NameValue = FName(TEXT("Some_Name_3"));
		Asset->StringValue = TEXT("Quote \" backslash \\ tab\tnew\nline = (a,b)");
		Asset->TextValue = FText::FromString(TEXT("Localised \"text\""));
		Asset->Mode = EReflectionTestMode::Third;
		Asset->Legacy = EReflectionTestLegacy::Beta;
		Asset->ObjectRef = SamePackageObject;
		Asset->RawObjectRef = OtherPackageObject;
		Asset->ClassRef = UReflectionTestObject::StaticClass();
		Asset->RawClassRef = UReflectionTestBase::StaticClass();
		Asset->Point.X = 1.5f;
		Asset->Point.Y = -2.5f;
		Asset->Point.Label = TEXT("point, with comma");
		Asset->Point.Target = SamePackageObject;
		Asset->IntArray = {3, 1, 2};
		Asset->StringArray = {TEXT("a"), TEXT(""), TEXT("c d")};
		Asset->ObjectArray = {SamePackageObject, nullptr, OtherPackageObject};
		FReflectionTestPoint Element;
		Element.X = 9.0f;
		Element.Label = TEXT("element");
		Asset->PointArray = {Element, FReflectionTestPoint()};
		Asset->StringToInt.Add(TEXT("one"), 1);
		Asset->StringToInt.Add(TEXT("two words"), 2);
		Asset->NameSet.Add(FName(TEXT("Alpha")));
		Asset->NameSet.Add(FName(TEXT("Beta")));
		Asset->FixedArray[0] = 10;
		Asset->FixedArray[1] = 20;
		Asset->FixedArray[2] = 30;
	}
} // namespace

TEST_F(FPackageTest, SavedFileIsATextPackageOfTheAsset)
{
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	Asset->IntValue = 5;
	Asset->StringValue = TEXT("hello");
	ASSERT_TRUE(Save(Asset->GetPackage(), Asset));

	FString Found;
	ASSERT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/Orvane/P"), &Found));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(FileOf(TEXT("/Game/Orvane/P"))));
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *Found));
	EXPECT_TRUE(Text.StartsWith(TEXT("HeadlessPackage 1\nPackage=/Game/Orvane/P\n"), ESearchCase::CaseSensitive))
		<< ToUtf8(Text);
	EXPECT_TRUE(Text.Contains(TEXT("Begin Object Name=P Class=/Script/CoreUObject.ReflectionTestObject "
								   "Flags=Public|Standalone|Transactional\n"),
		ESearchCase::CaseSensitive))
		<< ToUtf8(Text);
	EXPECT_TRUE(Text.Contains(TEXT("\tIntValue=5\n"), ESearchCase::CaseSensitive)) << ToUtf8(Text);
	EXPECT_TRUE(Text.Contains(TEXT("\tStringValue=\"hello\"\n"), ESearchCase::CaseSensitive)) << ToUtf8(Text);
	EXPECT_FALSE(Text.Contains(TEXT("TransientValue"), ESearchCase::CaseSensitive)) << ToUtf8(Text);
	EXPECT_EQ(ToUtf8(Asset->GetPackage()->FileName.ToString()), ToUtf8(Found));
}

TEST_F(FPackageTest, EveryPropertyKindSurvivesSaveUnloadAndLoad)
{
	UReflectionTestObject* Other = NewAsset(TEXT("/Game/Orvane/Other"));
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	UReflectionTestBase* Sub = NewObject<UReflectionTestBase>(Asset, TEXT("Sub"));
	Sub->BaseValue = 77;
	FillEveryKind(Asset, Sub, Other);
	const TMap<FString, FString> Before = ExportAll(Asset);
	ASSERT_TRUE(Save(Other->GetPackage(), Other));
	ASSERT_TRUE(Save(Asset->GetPackage(), Asset));

	Unload(TEXT("/Game/Orvane/P"));
	Unload(TEXT("/Game/Orvane/Other"));
	ASSERT_EQ(FindPackage(nullptr, TEXT("/Game/Orvane/P")), nullptr);
	ASSERT_EQ(FindPackage(nullptr, TEXT("/Game/Orvane/Other")), nullptr);

	UReflectionTestObject* Loaded = LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P.P"));
	ASSERT_NE(Loaded, nullptr);
	const TMap<FString, FString> After = ExportAll(Loaded);
	ASSERT_EQ(Before.Num(), After.Num());
	for (const TPair<FString, FString>& Value : Before)
	{
		const FString* Reloaded = After.Find(Value.Key);
		ASSERT_NE(Reloaded, nullptr) << ToUtf8(Value.Key);
		EXPECT_EQ(ToUtf8(*Reloaded), ToUtf8(Value.Value)) << ToUtf8(Value.Key);
	}

	// The values are equal, and references point at the reloaded objects, inside and across packages.
	EXPECT_EQ(Loaded->StringValue, TEXT("Quote \" backslash \\ tab\tnew\nline = (a,b)"));
	EXPECT_EQ(Loaded->UInt64Value, 18000000000000000000ull);
	EXPECT_EQ(Loaded->FloatValue, 1.25f);
	EXPECT_EQ(Loaded->DoubleValue, -2.5);
	EXPECT_EQ(Loaded->Mode, EReflectionTestMode::Third);
	EXPECT_EQ(Loaded->ClassRef.Get(), UReflectionTestObject::StaticClass());
	EXPECT_TRUE(Loaded->TextValue.ToString().Equals(TEXT("Localised \"text\""), ESearchCase::CaseSensitive));
	EXPECT_EQ(Loaded->StringToInt.FindRef(TEXT("two words")), 2);
	EXPECT_EQ(Loaded->FixedArray[1], 20);
	EXPECT_EQ(Loaded->TransientValue, 0);
	UReflectionTestBase* LoadedSub = FindObject<UReflectionTestBase>(Loaded, TEXT("Sub"));
	ASSERT_NE(LoadedSub, nullptr);
	EXPECT_EQ(LoadedSub->BaseValue, 77);
	EXPECT_EQ(Loaded->ObjectRef, LoadedSub);
	EXPECT_EQ(Loaded->Point.Target, LoadedSub);
	ASSERT_NE(Loaded->RawObjectRef, nullptr);
	EXPECT_EQ(ToUtf8(Loaded->RawObjectRef->GetPathName()), "/Game/Orvane/Other.Other");
	EXPECT_EQ(Loaded->RawObjectRef, FindObject<UReflectionTestBase>(nullptr, TEXT("/Game/Orvane/Other.Other")));
	ASSERT_EQ(Loaded->ObjectArray.Num(), 3);
	EXPECT_EQ(Loaded->ObjectArray[2], Loaded->RawObjectRef);
	EXPECT_TRUE(Loaded->HasAllFlags(RF_Public | RF_Standalone | RF_Transactional | RF_WasLoaded | RF_LoadCompleted));
	EXPECT_FALSE(Loaded->GetPackage()->IsDirty());
}

TEST_F(FPackageTest, ReferencesInBothDirectionsBetweenPackagesAreRestored)
{
	UReflectionTestObject* A = NewAsset(TEXT("/Game/Orvane/P"));
	UReflectionTestObject* B = NewAsset(TEXT("/Game/Orvane/Other"));
	A->ObjectRef = B;
	B->ObjectRef = A;
	ASSERT_TRUE(Save(A->GetPackage(), A));
	ASSERT_TRUE(Save(B->GetPackage(), B));
	Unload(TEXT("/Game/Orvane/P"));
	Unload(TEXT("/Game/Orvane/Other"));

	UPackage* Package = LoadPackage(nullptr, TEXT("/Game/Orvane/Other"), LOAD_None);
	ASSERT_NE(Package, nullptr);
	EXPECT_EQ(ToUtf8(Package->GetName()), "/Game/Orvane/Other");
	UReflectionTestObject* LoadedB = FindObject<UReflectionTestObject>(Package, TEXT("Other"));
	ASSERT_NE(LoadedB, nullptr);
	UReflectionTestObject* LoadedA = Cast<UReflectionTestObject>(LoadedB->ObjectRef);
	ASSERT_NE(LoadedA, nullptr);
	EXPECT_EQ(ToUtf8(LoadedA->GetPathName()), "/Game/Orvane/P.P");
	EXPECT_EQ(LoadedA->ObjectRef, LoadedB);
}

TEST_F(FPackageTest, PackagePathAndObjectPathLoadTheSameAsset)
{
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	Asset->IntValue = 41;
	ASSERT_TRUE(Save(Asset->GetPackage(), Asset));
	Unload(TEXT("/Game/Orvane/P"));

	UReflectionTestObject* ByPackagePath = LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P"));
	ASSERT_NE(ByPackagePath, nullptr);
	EXPECT_EQ(ByPackagePath->IntValue, 41);
	EXPECT_EQ(LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P.P")), ByPackagePath);
	EXPECT_EQ(LoadObject<UObject>(nullptr, TEXT("/Game/Orvane/P")), ByPackagePath);
	EXPECT_EQ(StaticLoadObject(
				  UObject::StaticClass(), nullptr, TEXT("/Script/CoreUObject.ReflectionTestObject'/Game/Orvane/P.P'")),
		ByPackagePath);
	EXPECT_EQ(LoadObject<UPackage>(nullptr, TEXT("/Game/Orvane/P")), ByPackagePath->GetPackage());
}

TEST_F(FPackageTest, PackagePathWithoutAnAssetOfItsNameNamesThePackageForAnyObject)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Orvane/Q"));
	UReflectionTestObject* Other =
		NewObject<UReflectionTestObject>(Package, FName(TEXT("Other")), RF_Public | RF_Standalone);
	ASSERT_NE(Other, nullptr);

	EXPECT_EQ(LoadObject<UObject>(nullptr, TEXT("/Game/Orvane/Q")), Package);
	EXPECT_EQ(LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/Q"), nullptr, LOAD_NoWarn), nullptr);
	EXPECT_EQ(LoadObject<UObject>(nullptr, TEXT("/Game/Orvane/Q.Q"), nullptr, LOAD_NoWarn), nullptr);
	EXPECT_EQ(LoadObject<UObject>(nullptr, TEXT("/Game/Orvane/Q.Other")), Other);
}

TEST_F(FPackageTest, FindingNeverLoadsButLoadingDoes)
{
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	ASSERT_TRUE(Save(Asset->GetPackage(), Asset));
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/Orvane/P.P")), Asset);
	Unload(TEXT("/Game/Orvane/P"));

	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/Orvane/P.P")), nullptr);
	EXPECT_EQ(FindPackage(nullptr, TEXT("/Game/Orvane/P")), nullptr);
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/Orvane/P")));

	UObject* Loaded = LoadObject<UObject>(nullptr, TEXT("/Game/Orvane/P.P"));
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/Orvane/P.P")), Loaded);
	EXPECT_NE(FindPackage(nullptr, TEXT("/Game/Orvane/P")), nullptr);
}

TEST_F(FPackageTest, MissingObjectsAndWrongClassesGiveNullAndAWarning)
{
	UReflectionTestBase* Base =
		NewObject<UReflectionTestBase>(CreatePackage(TEXT("/Game/Orvane/P")), TEXT("P"), RF_Public | RF_Standalone);
	ASSERT_TRUE(Save(Base->GetPackage(), Base));
	Unload(TEXT("/Game/Orvane/P"));

	FLogCapture Log;
	EXPECT_EQ(LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/Missing.Missing")), nullptr);
	EXPECT_TRUE(Log.Contains(TEXT("Failed to find object 'ReflectionTestObject /Game/Orvane/Missing.Missing'")));

	// A UReflectionTestBase is not a UReflectionTestObject.
	EXPECT_EQ(LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P.P")), nullptr);
	EXPECT_TRUE(Log.Contains(TEXT("Failed to find object 'ReflectionTestObject /Game/Orvane/P.P'")));
	EXPECT_NE(LoadObject<UReflectionTestBase>(nullptr, TEXT("/Game/Orvane/P.P")), nullptr);

	const int32 LinesBefore = Log.Lines.Num();
	EXPECT_EQ(
		StaticLoadObject(UObject::StaticClass(), nullptr, TEXT("/Game/Orvane/Missing.Missing"), nullptr, LOAD_NoWarn),
		nullptr);
	EXPECT_EQ(Log.Lines.Num(), LinesBefore);

	EXPECT_EQ(LoadPackage(nullptr, TEXT("/Game/Orvane/Missing"), LOAD_None), nullptr);
	EXPECT_TRUE(Log.Contains(TEXT("Failed to load '/Game/Orvane/Missing': Can't find file.")));
}

TEST_F(FPackageTest, ClassesLoadByPathAndAreCheckedAgainstTheBaseClass)
{
	EXPECT_EQ(LoadClass<UReflectionTestBase>(nullptr, TEXT("/Script/CoreUObject.ReflectionTestObject")),
		UReflectionTestObject::StaticClass());
	EXPECT_EQ(StaticLoadClass(UObject::StaticClass(), nullptr, TEXT("/Script/CoreUObject.ReflectionTestBase")),
		UReflectionTestBase::StaticClass());
	FLogCapture Log;
	EXPECT_EQ(LoadClass<UReflectionTestObject>(nullptr, TEXT("/Script/CoreUObject.ReflectionTestBase")), nullptr);
	EXPECT_TRUE(Log.Contains(TEXT("is not a child class of")));
}

TEST_F(FPackageTest, SoftPointersResolveOnlyInMemoryAndLoadSynchronously)
{
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	Asset->IntValue = 3;
	const TSoftObjectPtr<UReflectionTestObject> FromObject(Asset);
	EXPECT_EQ(FromObject.Get(), Asset);
	EXPECT_TRUE(FromObject.IsValid());
	EXPECT_EQ(ToUtf8(FromObject.ToString()), "/Game/Orvane/P.P");
	ASSERT_TRUE(Save(Asset->GetPackage(), Asset));
	Unload(TEXT("/Game/Orvane/P"));

	const TSoftObjectPtr<UReflectionTestObject> Soft(FSoftObjectPath(TEXT("/Game/Orvane/P.P")));
	EXPECT_EQ(Soft, FromObject);
	EXPECT_EQ(Soft.Get(), nullptr);
	EXPECT_FALSE(Soft.IsValid());
	EXPECT_TRUE(Soft.IsPending());
	EXPECT_FALSE(Soft.IsNull());
	EXPECT_EQ(FSoftObjectPath(TEXT("/Game/Orvane/P.P")).ResolveObject(), nullptr);

	UReflectionTestObject* Loaded = Soft.LoadSynchronous();
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(Loaded->IntValue, 3);
	EXPECT_EQ(Soft.Get(), Loaded);
	EXPECT_TRUE(Soft.IsValid());
	EXPECT_FALSE(Soft.IsPending());
	EXPECT_EQ(FSoftObjectPath(Loaded), FSoftObjectPath(TEXT("/Game/Orvane/P.P")));
	EXPECT_EQ(FSoftObjectPath(TEXT("/Game/Orvane/P.P")).TryLoad(), Loaded);

	// A soft pointer of another class sees nothing there.
	const TSoftObjectPtr<UPackage> WrongClass(FSoftObjectPath(TEXT("/Game/Orvane/P.P")));
	EXPECT_EQ(WrongClass.Get(), nullptr);
	EXPECT_EQ(WrongClass.LoadSynchronous(), nullptr);

	const TSoftObjectPtr<UReflectionTestObject> Null;
	EXPECT_TRUE(Null.IsNull());
	EXPECT_EQ(Null.LoadSynchronous(), nullptr);
	EXPECT_EQ(ToUtf8(Null.ToString()), "");
}

TEST_F(FPackageTest, SoftClassPointersAndPaths)
{
	const TSoftClassPtr<UReflectionTestBase> Soft(FSoftObjectPath(TEXT("/Script/CoreUObject.ReflectionTestObject")));
	EXPECT_EQ(Soft.Get(), UReflectionTestObject::StaticClass());
	EXPECT_EQ(Soft.LoadSynchronous(), UReflectionTestObject::StaticClass());
	const TSoftClassPtr<UReflectionTestObject> NotAChild(
		FSoftObjectPath(TEXT("/Script/CoreUObject.ReflectionTestBase")));
	EXPECT_EQ(NotAChild.Get(), nullptr);

	const FSoftClassPath ClassPath(UReflectionTestObject::StaticClass());
	EXPECT_EQ(ToUtf8(ClassPath.ToString()), "/Script/CoreUObject.ReflectionTestObject");
	EXPECT_EQ(ClassPath.ResolveClass(), UReflectionTestObject::StaticClass());
	EXPECT_EQ(ClassPath.TryLoadClass<UReflectionTestBase>(), UReflectionTestObject::StaticClass());
	EXPECT_TRUE(FSoftClassPath(static_cast<const UClass*>(nullptr)).IsNull());

	const FTopLevelAssetPath FromClass(UReflectionTestObject::StaticClass());
	EXPECT_EQ(ToUtf8(FromClass.ToString()), "/Script/CoreUObject.ReflectionTestObject");
}

TEST_F(FPackageTest, SavingRefusesAReadOnlyFileAndLeavesItIntact)
{
	const FString Filename = FileOf(TEXT("/Game/Orvane/ReadOnly"));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("original"), *Filename));
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*Filename, true));

	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/ReadOnly"));
	Asset->GetPackage()->SetDirtyFlag(true);
	FLogCapture Errors;
	FLogCapture* ErrorDevice = &Errors;
	EXPECT_FALSE(Save(Asset->GetPackage(), Asset, ErrorDevice));
	EXPECT_TRUE(Errors.Contains(TEXT("is read-only")));
	EXPECT_TRUE(Asset->GetPackage()->IsDirty());

	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *Filename));
	EXPECT_EQ(ToUtf8(Text), "original");
	EXPECT_TRUE(IFileManager::Get().IsReadOnly(*Filename));
	FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*Filename, false);
}

TEST_F(FPackageTest, SavingClearsTheDirtyFlagUnlessAskedToKeepIt)
{
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	UPackage* Package = Asset->GetPackage();
	Package->SetDirtyFlag(true);
	ASSERT_TRUE(Save(Package, Asset, nullptr, SAVE_KeepDirty));
	EXPECT_TRUE(Package->IsDirty());
	ASSERT_TRUE(Save(Package, Asset));
	EXPECT_FALSE(Package->IsDirty());

	FSavePackageArgs Args;
	const FSavePackageResultStruct Result = UPackage::Save(Package, Asset, *FileOf(TEXT("/Game/Orvane/P")), Args);
	EXPECT_TRUE(Result.IsSuccessful());
	EXPECT_EQ(Result.TotalFileSize, IFileManager::Get().FileSize(*FileOf(TEXT("/Game/Orvane/P"))));
	EXPECT_GT(Result.TotalFileSize, 0);
}

TEST_F(FPackageTest, TransientObjectsAreNotSaved)
{
	UReflectionTestObject* Asset = NewAsset(TEXT("/Game/Orvane/P"));
	NewObject<UReflectionTestBase>(Asset, TEXT("Kept"));
	UReflectionTestBase* Transient = NewObject<UReflectionTestBase>(Asset, TEXT("Scratch"), RF_Transient);
	NewObject<UReflectionTestBase>(Transient, TEXT("InsideScratch"));
	ASSERT_TRUE(Save(Asset->GetPackage(), Asset));

	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *FileOf(TEXT("/Game/Orvane/P"))));
	EXPECT_TRUE(Text.Contains(
		TEXT("Name=Kept Class=/Script/CoreUObject.ReflectionTestBase Outer=P"), ESearchCase::CaseSensitive))
		<< ToUtf8(Text);
	EXPECT_FALSE(Text.Contains(TEXT("Scratch"), ESearchCase::CaseSensitive)) << ToUtf8(Text);

	Unload(TEXT("/Game/Orvane/P"));
	UReflectionTestObject* Loaded = LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P.P"));
	ASSERT_NE(Loaded, nullptr);
	EXPECT_NE(FindObject<UReflectionTestBase>(Loaded, TEXT("Kept")), nullptr);
	EXPECT_EQ(FindObject<UReflectionTestBase>(Loaded, TEXT("Scratch")), nullptr);
}

TEST_F(FPackageTest, HandWrittenFilesLoadAndBadLinesAreReported)
{
	const FString Filename = FileOf(TEXT("/Game/Orvane/P"));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(
		TEXT("HeadlessPackage 1\n"
			 "; written by hand\n"
			 "Begin Object Name=P Class=/Script/CoreUObject.ReflectionTestObject Flags=Public|Standalone\n"
			 "\tIntValue=17\n"
			 "\tFixedArray(2)=5\n"
			 "\tNoSuchProperty=1\n"
			 "\tStringValue%=\"two%0Alines\"\n"
			 "End Object\n"),
		*Filename));
	FLogCapture Log;
	UReflectionTestObject* Loaded = LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P"));
	ASSERT_NE(Loaded, nullptr);
	EXPECT_EQ(Loaded->IntValue, 17);
	EXPECT_EQ(Loaded->FixedArray[2], 5);
	EXPECT_EQ(Loaded->StringValue, TEXT("two\nlines"));
	// Values the file does not give keep the class defaults.
	EXPECT_EQ(Loaded->BaseValue, 7);
	EXPECT_TRUE(Log.Contains(TEXT("line 6: ReflectionTestObject has no property 'NoSuchProperty'")));
	Unload(TEXT("/Game/Orvane/P"));

	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("HeadlessPackage 1\nBegin Object Name=P\nEnd Object\n"), *Filename));
	EXPECT_EQ(LoadObject<UReflectionTestObject>(nullptr, TEXT("/Game/Orvane/P.P"), nullptr, LOAD_NoWarn), nullptr);
	EXPECT_TRUE(Log.Contains(TEXT("line 2: an object needs a Name and a Class")));

	ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("binary garbage"), *Filename));
	EXPECT_EQ(LoadPackage(nullptr, TEXT("/Game/Orvane/P"), LOAD_NoWarn), nullptr);
	EXPECT_TRUE(Log.Contains(TEXT("not a headless package file")));
}

TEST_F(FPackageTest, FlushAsyncLoadingHasNothingToWaitFor)
{
	FLogCapture Log;
	FlushAsyncLoading();
	FlushAsyncLoading(TConstArrayView<int32>());
	EXPECT_TRUE(Log.Lines.IsEmpty());
}
