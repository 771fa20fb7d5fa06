// Copyright Orvane. All Rights Reserved.

#include "Misc/FileHelper.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformFileManager.h"
#include "Misc/Paths.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

namespace
{
	/** Passes everything to the physical file system, but can make every write fail half way. */
	class FFailingWritesPlatformFile : public IPlatformFile
	{
	public:
		explicit FFailingWritesPlatformFile(IPlatformFile& InLower)
			: Lower(InLower)
		{
		}

		/** A handle that writes a few bytes, then fails, as a full disk would. */
		class FFailingHandle : public IFileHandle
		{
		public:
			explicit FFailingHandle(IFileHandle* InInner)
				: Inner(InInner)
			{
			}
			virtual ~FFailingHandle() override { delete Inner; }
			virtual int64 Tell() override { return Inner->Tell(); }
			virtual bool Seek(int64 NewPosition) override { return Inner->Seek(NewPosition); }
			virtual bool SeekFromEnd(int64 NewPositionRelativeToEnd) override
			{
				return Inner->SeekFromEnd(NewPositionRelativeToEnd);
			}
			virtual bool Read(uint8* Destination, int64 BytesToRead) override
			{
				return Inner->Read(Destination, BytesToRead);
			}
			virtual bool Write(const uint8* Source, int64 BytesToWrite) override
			{
				Inner->Write(Source, BytesToWrite > 2 ? 2 : BytesToWrite);
				return false;
			}
			virtual bool Flush(const bool bFullFlush) override { return Inner->Flush(bFullFlush); }
			virtual bool Truncate(int64 NewSize) override { return Inner->Truncate(NewSize); }
			virtual int64 Size() override { return Inner->Size(); }

		private:
			IFileHandle* Inner;
		};

		virtual const TCHAR* GetName() const override { return TEXT("FailingWrites"); }
		virtual bool FileExists(const TCHAR* Filename) override { return Lower.FileExists(Filename); }
		virtual int64 FileSize(const TCHAR* Filename) override { return Lower.FileSize(Filename); }
		virtual bool DeleteFile(const TCHAR* Filename) override { return Lower.DeleteFile(Filename); }
		virtual bool IsReadOnly(const TCHAR* Filename) override { return Lower.IsReadOnly(Filename); }
		virtual bool MoveFile(const TCHAR* To, const TCHAR* From) override { return Lower.MoveFile(To, From); }
		virtual bool SetReadOnly(const TCHAR* Filename, bool bValue) override
		{
			return Lower.SetReadOnly(Filename, bValue);
		}
		virtual bool DirectoryExists(const TCHAR* Directory) override { return Lower.DirectoryExists(Directory); }
		virtual bool CreateDirectory(const TCHAR* Directory) override { return Lower.CreateDirectory(Directory); }
		virtual bool DeleteDirectory(const TCHAR* Directory) override { return Lower.DeleteDirectory(Directory); }
		virtual IFileHandle* OpenRead(const TCHAR* Filename, bool bAllowWrite) override
		{
			return Lower.OpenRead(Filename, bAllowWrite);
		}
		virtual IFileHandle* OpenWrite(const TCHAR* Filename, bool bAppend, bool bAllowRead) override
		{
			IFileHandle* Inner = Lower.OpenWrite(Filename, bAppend, bAllowRead);
			return Inner != nullptr ? new FFailingHandle(Inner) : nullptr;
		}
		virtual bool IterateDirectory(const TCHAR* Directory, FDirectoryVisitor& Visitor) override
		{
			return Lower.IterateDirectory(Directory, Visitor);
		}

	private:
		IPlatformFile& Lower;
	};

	/** A fresh folder under /tmp, deleted with everything in it at the end of the test. */
	class FFileHelperTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/FileHelperTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
		}

		void TearDown() override
		{
			FPlatformFileManager::Get().SetPlatformFile(nullptr);
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		static std::vector<uint8> ReadBytes(const FString& Path)
		{
			TArray<uint8> Bytes;
			EXPECT_TRUE(FFileHelper::LoadFileToArray(Bytes, *Path));
			return std::vector<uint8>(Bytes.GetData(), Bytes.GetData() + Bytes.Num());
		}

		static std::string ReadText(const FString& Path)
		{
			FString Text;
			return FFileHelper::LoadFileToString(Text, *Path) ? ToUtf8(Text) : "<unreadable>";
		}

		/** Number of entries in the temporary folder, to see that no temporary file is left behind. */
		int32 CountEntries() const
		{
			TArray<FString> Entries;
			IFileManager::Get().FindFiles(Entries, *(TempDir / TEXT("*")), true, true);
			return Entries.Num();
		}

		FString TempDir;
	};

	const TCHAR* const NonAsciiText = u"Caf\u00e9 \u65e5\u672c";
	const char* const NonAsciiUtf8 = "Caf\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac";
} // namespace

TEST_F(FFileHelperTest, AutoDetectWritesAsciiTextAsPlainBytes)
{
	const FString File = TempDir / TEXT("ascii.txt");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("Hi\n")), *File));
	EXPECT_EQ(ReadBytes(File), (std::vector<uint8>{'H', 'i', '\n'}));
	EXPECT_EQ(ReadText(File), "Hi\n");
}

TEST_F(FFileHelperTest, AutoDetectWritesOtherTextAsUtf16WithByteOrderMark)
{
	const FString File = TempDir / TEXT("wide.txt");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(u"A\u00e9"), *File));
	EXPECT_EQ(ReadBytes(File), (std::vector<uint8>{0xff, 0xfe, 'A', 0x00, 0xe9, 0x00}));

	const FString RoundTrip = TempDir / TEXT("roundtrip.txt");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(NonAsciiText), *RoundTrip));
	EXPECT_EQ(ReadText(RoundTrip), NonAsciiUtf8);
}

TEST_F(FFileHelperTest, Utf8IsWrittenWithOrWithoutByteOrderMarkAndReadBack)
{
	const FString WithBom = TempDir / TEXT("bom.txt");
	const FString WithoutBom = TempDir / TEXT("nobom.txt");
	ASSERT_TRUE(
		FFileHelper::SaveStringToFile(FStringView(u"\u00e9"), *WithBom, FFileHelper::EEncodingOptions::ForceUTF8));
	ASSERT_TRUE(FFileHelper::SaveStringToFile(
		FStringView(u"\u00e9"), *WithoutBom, FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM));

	EXPECT_EQ(ReadBytes(WithBom), (std::vector<uint8>{0xef, 0xbb, 0xbf, 0xc3, 0xa9}));
	EXPECT_EQ(ReadBytes(WithoutBom), (std::vector<uint8>{0xc3, 0xa9}));
	EXPECT_EQ(ReadText(WithBom), "\xc3\xa9");
	EXPECT_EQ(ReadText(WithoutBom), "\xc3\xa9");

	const FString Long = TempDir / TEXT("long.txt");
	ASSERT_TRUE(
		FFileHelper::SaveStringToFile(FStringView(NonAsciiText), *Long, FFileHelper::EEncodingOptions::ForceUTF8));
	EXPECT_EQ(ReadText(Long), NonAsciiUtf8);
}

TEST_F(FFileHelperTest, BigEndianUtf16IsRecognised)
{
	const FString File = TempDir / TEXT("be.txt");
	const uint8 Bytes[] = {0xfe, 0xff, 0x00, 'O', 0x00, 'k'};
	ASSERT_TRUE(FFileHelper::SaveArrayToFile(TArrayView<const uint8>(Bytes, 6), *File));
	EXPECT_EQ(ReadText(File), "Ok");
}

TEST_F(FFileHelperTest, LoadFileToStringArraySplitsLines)
{
	const FString File = TempDir / TEXT("lines.txt");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("one\r\ntwo\n\nfour")), *File));
	TArray<FString> Lines;
	ASSERT_TRUE(FFileHelper::LoadFileToStringArray(Lines, *File));
	ASSERT_EQ(Lines.Num(), 4);
	EXPECT_EQ(ToUtf8(Lines[0]), "one");
	EXPECT_EQ(ToUtf8(Lines[1]), "two");
	EXPECT_EQ(ToUtf8(Lines[2]), "");
	EXPECT_EQ(ToUtf8(Lines[3]), "four");
}

TEST_F(FFileHelperTest, SavingCreatesMissingFoldersAndReadingAMissingFileFails)
{
	const FString File = TempDir / TEXT("a/b/c.ini");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("[S]")), *File));
	EXPECT_EQ(ReadText(File), "[S]");

	FString Text(TEXT("unchanged"));
	EXPECT_FALSE(FFileHelper::LoadFileToString(Text, *(TempDir / TEXT("missing.txt"))));
}

TEST_F(FFileHelperTest, AReadOnlyTargetIsRefusedAndLeftUntouched)
{
	const FString File = TempDir / TEXT("DefaultGame.ini");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("old")), *File));
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*File, true));

	EXPECT_FALSE(FFileHelper::SaveStringToFile(FStringView(TEXT("new")), *File));
	EXPECT_EQ(ReadText(File), "old");
	EXPECT_TRUE(IFileManager::Get().IsReadOnly(*File));
	EXPECT_EQ(CountEntries(), 1);

	EXPECT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("new")), *File,
		FFileHelper::EEncodingOptions::AutoDetect, &IFileManager::Get(), FILEWRITE_EvenIfReadOnly));
	EXPECT_EQ(ReadText(File), "new");
}

TEST_F(FFileHelperTest, AFailedWriteKeepsTheOldFileAndLeavesNoTemporaryFile)
{
	const FString File = TempDir / TEXT("settings.ini");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("old contents")), *File));

	FFailingWritesPlatformFile Failing(FPlatformFileManager::Get().GetPlatformFile());
	FPlatformFileManager::Get().SetPlatformFile(&Failing);
	const bool bSaved = FFileHelper::SaveStringToFile(FStringView(TEXT("new contents")), *File);
	FPlatformFileManager::Get().SetPlatformFile(nullptr);

	EXPECT_FALSE(bSaved);
	EXPECT_EQ(ReadText(File), "old contents");
	EXPECT_EQ(CountEntries(), 1);
}

TEST_F(FFileHelperTest, NoReplaceExistingAndAppendFlags)
{
	const FString File = TempDir / TEXT("log.txt");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("a")), *File));
	EXPECT_FALSE(FFileHelper::SaveStringToFile(FStringView(TEXT("b")), *File, FFileHelper::EEncodingOptions::AutoDetect,
		&IFileManager::Get(), FILEWRITE_NoReplaceExisting));
	EXPECT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("c")), *File, FFileHelper::EEncodingOptions::AutoDetect,
		&IFileManager::Get(), FILEWRITE_Append));
	EXPECT_EQ(ReadText(File), "ac");
}
