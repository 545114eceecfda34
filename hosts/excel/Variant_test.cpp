#include "hosts/excel/Variant.h"

#include <gtest/gtest.h>

#include "hosts/excel/Failure.h"
#include "src/host/Errors.h"

namespace tolvane::excel {
namespace {

using host::CellBlock;
using host::CellError;
using host::CellValue;

// What COM itself says stands at a place of an array.
Variant ElementOf(const Variant& array, LONG row, LONG column) {
  LONG at[2] = {row, column};
  Variant element;
  EXPECT_EQ(SafeArrayGetElement(V_ARRAY(&array.get()), at, element.receive()), S_OK);
  return element;
}

TEST(VariantTest, ABlockIsAnArrayOfVariantsFromOneRowsFirst) {
  const Variant array(CellBlock{{1, "two", true}, {CellError::NA, CellValue(), -0.5}});
  ASSERT_EQ(array.type(), VT_ARRAY | VT_VARIANT);
  SAFEARRAY* const raw = V_ARRAY(&array.get());
  ASSERT_EQ(SafeArrayGetDim(raw), 2u);
  LONG bound = 0;
  for (const UINT dimension : {1u, 2u}) {
    EXPECT_EQ(SafeArrayGetLBound(raw, dimension, &bound), S_OK);
    EXPECT_EQ(bound, 1);
    EXPECT_EQ(SafeArrayGetUBound(raw, dimension, &bound), S_OK);
    EXPECT_EQ(bound, dimension == 1 ? 2 : 3);
  }
  EXPECT_EQ(ElementOf(array, 1, 1).type(), VT_R8);
  EXPECT_EQ(ElementOf(array, 1, 1).AsDouble(), 1);
  EXPECT_EQ(ElementOf(array, 1, 2).type(), VT_BSTR);
  EXPECT_EQ(ElementOf(array, 1, 2).AsText(), "two");
  EXPECT_EQ(ElementOf(array, 1, 3).type(), VT_BOOL);
  const Variant error = ElementOf(array, 2, 1);
  EXPECT_EQ(error.type(), VT_ERROR);
  EXPECT_EQ(static_cast<unsigned>(V_ERROR(&error.get())), 0x800A0000u + 2042u);
  EXPECT_EQ(ElementOf(array, 2, 2).type(), VT_EMPTY);
  EXPECT_EQ(ElementOf(array, 2, 3).AsDouble(), -0.5);
}

TEST(VariantTest, OneCellIsNoArray) {
  EXPECT_EQ(Variant(CellBlock(CellValue(12.5))).type(), VT_R8);
  EXPECT_EQ(Variant(CellBlock(CellValue())).type(), VT_EMPTY);
}

TEST(VariantTest, BlocksComeBack) {
  const CellBlock block{{true, 1e300, "Zürich 東京 😀"}, {CellError::Div0, CellValue(), ""}};
  EXPECT_TRUE(Variant(block).AsBlock() == block);
}

TEST(VariantTest, ArraysThatCountFromElsewhereAreRead) {
  SAFEARRAYBOUND bounds[2] = {{2, 0}, {1, -3}};
  Variant array;
  V_ARRAY(array.receive()) = SafeArrayCreate(VT_VARIANT, 2, bounds);
  V_VT(array.receive()) = VT_ARRAY | VT_VARIANT;
  LONG at[2] = {1, -3};
  const Variant seven(7);
  ASSERT_EQ(SafeArrayPutElement(V_ARRAY(&array.get()), at, const_cast<VARIANT*>(&seven.get())), S_OK);
  EXPECT_TRUE(array.AsBlock() == (CellBlock{{CellValue()}, {7}}));
}

TEST(VariantTest, MoneyDatesAndWholeNumbersAreNumbers) {
  VARIANT money;
  V_VT(&money) = VT_CY;
  V_CY(&money).int64 = 123400;  // in ten-thousandths
  EXPECT_TRUE(Variant::CopyOf(money).AsCell() == CellValue(12.34));
  VARIANT date;
  V_VT(&date) = VT_DATE;
  V_DATE(&date) = 39887;
  EXPECT_TRUE(Variant::CopyOf(date).AsCell() == CellValue(39887.0));
  EXPECT_TRUE(Variant(5).AsCell() == CellValue(5.0));
}

TEST(VariantTest, WhatDoesNotConvertIsAMismatch) {
  for (const Variant& value : {Variant("text"), Variant(CellBlock(2, 2)), Variant::Missing()}) {
    try {
      value.AsDouble();
      ADD_FAILURE() << "converted type " << value.type();
    } catch (const host::HostError& error) {
      EXPECT_EQ(error.number(), host::ErrorNumber::TypeMismatch);
    }
  }
}

host::HostError Failing(HRESULT result, SCODE code, WORD number, const wchar_t* text) {
  EXCEPINFO exception = {};
  exception.scode = code;
  exception.wCode = number;
  exception.bstrDescription = text == nullptr ? nullptr : SysAllocString(text);
  try {
    ThrowFailure(result, exception, "Range.Value");
  } catch (const host::HostError& error) {
    return error;
  }
}

TEST(FailureTest, TheProgramsOwnNumbersAreThePorts) {
  const host::HostError refused = Failing(DISP_E_EXCEPTION, static_cast<SCODE>(0x800A03EC), 0, L"Protected");
  EXPECT_EQ(refused.number(), host::ErrorNumber::ApplicationDefined);
  EXPECT_STREQ(refused.what(), "Protected");
  EXPECT_EQ(Failing(DISP_E_EXCEPTION, static_cast<SCODE>(0x800A01A8), 0, nullptr).number(),
            host::ErrorNumber::ObjectRequired);
  EXPECT_EQ(Failing(DISP_E_EXCEPTION, 0, 9, nullptr).number(), host::ErrorNumber::SubscriptOutOfRange);
  EXPECT_EQ(Failing(DISP_E_EXCEPTION, static_cast<SCODE>(0x800A01B6), 0, nullptr).number(),
            host::ErrorNumber::ApplicationDefined);  // 438, which the port does not have
}

TEST(FailureTest, ComsNumbersAreTranslated) {
  EXPECT_EQ(Failing(DISP_E_TYPEMISMATCH, 0, 0, nullptr).number(), host::ErrorNumber::TypeMismatch);
  EXPECT_EQ(Failing(DISP_E_BADINDEX, 0, 0, nullptr).number(), host::ErrorNumber::SubscriptOutOfRange);
  EXPECT_EQ(Failing(RPC_E_DISCONNECTED, 0, 0, nullptr).number(), host::ErrorNumber::ObjectRequired);
  const host::HostError unknown = Failing(DISP_E_MEMBERNOTFOUND, 0, 0, nullptr);
  EXPECT_EQ(unknown.number(), host::ErrorNumber::ApplicationDefined);
  EXPECT_STREQ(unknown.what(), "Excel refused Range.Value (0x80020003).");
}

}  // namespace
}  // namespace tolvane::excel
