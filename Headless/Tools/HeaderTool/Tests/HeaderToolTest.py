#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""Runs the header tool on small headers and checks its output and its error messages (file and line)."""

import os
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "HeaderTool.py")

GOOD_HEADER = """// A good header.
#pragma once

#include "UObject/Object.h"

#include "Good.generated.h"

UENUM()
enum class EGood : uint8
{
	A,
	B UMETA(DisplayName = "Bee"),
};

USTRUCT()
struct FGoodStruct
{
	GENERATED_BODY()

	UPROPERTY()
	int32 Value = 0;
};

/** A good class. */
UCLASS(config = Game)
class UGood : public UObject
{
	GENERATED_BODY()

public:
	UPROPERTY(EditAnywhere, config, Category = "Good")
	TArray<FString> Names;

	UFUNCTION(BlueprintCallable)
	int32 Sum(int32 A, const FString& B) const;
};
"""


def run_tool(directory, name, text):
    module = os.path.join(directory, "Module")
    public = os.path.join(module, "Public")
    os.makedirs(public, exist_ok=True)
    path = os.path.join(public, name)
    with open(path, "w", encoding="utf-8") as handle:
        handle.write(text)
    output = os.path.join(directory, "Out")
    result = subprocess.run(
        [sys.executable, TOOL, "--module", "Sample", "--module-dir", module, "--output-dir", output,
         "--repo-root", directory, path],
        capture_output=True, text=True)
    return result, output


class HeaderToolTest(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()

    def expect_error(self, name, text, line, message):
        result, _ = run_tool(self.directory, name, text)
        self.assertEqual(result.returncode, 1, result.stderr)
        expected = "Module/Public/%s(%d): error: %s" % (name, line, message)
        self.assertIn(expected, result.stderr)

    def test_good_header_generates_both_files(self):
        result, output = run_tool(self.directory, "Good.h", GOOD_HEADER)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(os.path.join(output, "Good.generated.h"), encoding="utf-8") as handle:
            generated = handle.read()
        with open(os.path.join(output, "Good.gen.cpp"), encoding="utf-8") as handle:
            source = handle.read()
        self.assertIn("#define CURRENT_FILE_ID FID_Module_Public_Good_h", generated)
        self.assertIn("#define FID_Module_Public_Good_h_18_GENERATED_BODY", generated)
        self.assertIn("#define FID_Module_Public_Good_h_28_GENERATED_BODY", generated)
        self.assertIn("using Super = UObject;", generated)
        self.assertIn("static SAMPLE_API UClass* GetPrivateStaticClass();", generated)
        self.assertIn('TEXT("/Script/Sample")', source)
        self.assertIn('{TEXT("DisplayName"), TEXT("Bee")}', source)
        self.assertIn("CPF_Edit | CPF_Config", source)
        self.assertIn('TEXT("Game")', source)
        self.assertIn("FUNC_Native | FUNC_BlueprintCallable | FUNC_Const | FUNC_Public", source)

    def test_missing_generated_body(self):
        text = GOOD_HEADER.replace("class UGood : public UObject\n{\n\tGENERATED_BODY()", "class UGood : public UObject\n{")
        self.expect_error("Good.h", text, 25, "UCLASS UGood has no GENERATED_BODY()")

    def test_generated_include_must_be_last(self):
        text = GOOD_HEADER.replace('#include "Good.generated.h"\n', '#include "Good.generated.h"\n#include "Other.h"\n')
        self.expect_error("Good.h", text, 7,
                          '#include "Good.generated.h" must come after every other #include, found "Other.h" after it')

    def test_missing_generated_include(self):
        text = GOOD_HEADER.replace('#include "Good.generated.h"\n', "")
        self.expect_error("Good.h", text, 7, 'Missing #include "Good.generated.h" (it must be the last #include)')

    def test_unknown_specifier(self):
        text = GOOD_HEADER.replace("UPROPERTY(EditAnywhere, config", "UPROPERTY(EditAnywhere, Sparkly, config")
        self.expect_error("Good.h", text, 31, "Unknown UPROPERTY specifier 'Sparkly'")

    def test_unsupported_property_type(self):
        text = GOOD_HEADER.replace("TArray<FString> Names;", "std::vector<int> Names;")
        self.expect_error("Good.h", text, 32, "Unsupported property type 'std::vector<int>'")

    def test_unknown_class_specifier(self):
        text = GOOD_HEADER.replace("UCLASS(config = Game)", "UCLASS(config = Game, Wobbly)")
        self.expect_error("Good.h", text, 25, "Unknown UCLASS specifier 'Wobbly'")


if __name__ == "__main__":
    unittest.main()
