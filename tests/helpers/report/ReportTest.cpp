#include "helpers/report/Report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "helpers/report/CapturedOutput.h"
#include "helpers/report/PublishedNames.h"

namespace {

using captured::TakeDebugged;
using captured::TakeTraced;
using helpers::ErrorName;
using helpers::ReportFxError;
using helpers::ReportPropertyError;
using helpers::ReportTarnexError;
using testing::ElementsAre;
using testing::IsEmpty;

class Report : public testing::Test {
protected:
    Report() {
        TakeTraced();
        TakeDebugged();
    }
};

TEST_F(Report, CodeZeroLogsNothingInAnyForm) {
    EXPECT_EQ(ReportFxError(fx::eSuccess), fx::eSuccess);
    EXPECT_EQ(ReportFxError(fx::eSuccess, "operation"), fx::eSuccess);
    EXPECT_EQ(ReportTarnexError(tarnex::eSuccess), tarnex::eSuccess);
    EXPECT_EQ(ReportTarnexError(tarnex::eSuccess, "operation"), tarnex::eSuccess);
    EXPECT_EQ(ReportPropertyError(base_types::eSuccess), base_types::eSuccess);
    EXPECT_EQ(ReportPropertyError(base_types::eSuccess, "operation"), base_types::eSuccess);
    EXPECT_EQ(ReportPropertyError(base_types::eSuccess, "operation", L"Gain"),
              base_types::eSuccess);
    EXPECT_THAT(TakeTraced(), IsEmpty());
    EXPECT_THAT(TakeDebugged(), IsEmpty());
}

TEST_F(Report, NamedFormHoldsOperationAndCodeName) {
    EXPECT_EQ(ReportTarnexError(tarnex::eTarnexLockedByOtherProcess, "tarnex::GetTarnex"),
              tarnex::eTarnexLockedByOtherProcess);
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation \"tarnex::GetTarnex\" returned error "
                                          L"<eTarnexLockedByOtherProcess>"));
    EXPECT_EQ(ReportFxError(fx::eInvalidFxFactoryObject, "tarnex::GlobalFXFactory::CreateFX"),
              fx::eInvalidFxFactoryObject);
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation \"tarnex::GlobalFXFactory::CreateFX\" "
                                          L"returned error <eInvalidFxFactoryObject>"));
    EXPECT_EQ(ReportPropertyError(base_types::ePropertyNotFound, "PropertySet::GetProperty<int>"),
              base_types::ePropertyNotFound);
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation \"PropertySet::GetProperty<int>\" returned "
                                          L"error <ePropertyNotFound>"));
}

TEST_F(Report, PlainFormNamesTheCodeOfItsOwnEnumeration) {
    EXPECT_EQ(ReportFxError(fx::eWrongFXIdx), fx::eWrongFXIdx);
    EXPECT_EQ(ReportTarnexError(tarnex::eGenericException), tarnex::eGenericException);
    EXPECT_EQ(ReportPropertyError(base_types::eInvalidObject), base_types::eInvalidObject);
    EXPECT_EQ(std::uint32_t{fx::eWrongFXIdx}, std::uint32_t{tarnex::eGenericException});
    EXPECT_EQ(std::uint32_t{fx::eWrongFXIdx}, std::uint32_t{base_types::eInvalidObject});
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation returned error <eWrongFXIdx>",
                                          L"Operation returned error <eGenericException>",
                                          L"Operation returned error <eInvalidObject>"));
}

TEST_F(Report, PropertyFormHoldsTheWidePropertyName) {
    EXPECT_EQ(
        ReportPropertyError(base_types::ePropertyNoAccessForReading,
                            "base_types::PropertySet::GetProperty", L"Gr\u00f6\u00dfe \u6f22"),
        base_types::ePropertyNoAccessForReading);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(L"Operation \"base_types::PropertySet::GetProperty\" returned error "
                            L"<ePropertyNoAccessForReading>, property: \"Gr\u00f6\u00dfe "
                            L"\u6f22\""));
}

TEST_F(Report, PercentSignsAreText) {
    ReportFxError(fx::eNotValid, "100%s%n%d");
    ReportPropertyError(base_types::eOutOfRange, "%S%s", L"%s%S%n");
    EXPECT_THAT(TakeTraced(),
                ElementsAre(L"Operation \"100%s%n%d\" returned error <eNotValid>",
                            L"Operation \"%S%s\" returned error <eOutOfRange>, property: "
                            L"\"%s%S%n\""));
}

TEST_F(Report, NullAndEmptyOperationsAreEmptyTexts) {
    ReportFxError(fx::eNotValid, nullptr);
    ReportTarnexError(tarnex::eWrongFXName, "");
    ReportPropertyError(base_types::eGenericError, nullptr);
    ReportPropertyError(base_types::eGenericError, nullptr, L"");
    EXPECT_THAT(TakeTraced(),
                ElementsAre(L"Operation \"\" returned error <eNotValid>",
                            L"Operation \"\" returned error <eWrongFXName>",
                            L"Operation \"\" returned error <eGenericError>",
                            L"Operation \"\" returned error <eGenericError>, property: \"\""));
}

TEST_F(Report, NarrowTextIsCutAt1023Characters) {
    const std::string head = "Operation \"";
    for (const std::size_t length : {1011u, 1012u, 1013u, 5000u}) {
        const std::string operation(length, 'x');
        ReportFxError(fx::eNotValid, operation.c_str());
        const std::string whole = head + operation + "\" returned error <eNotValid>";
        const std::string cut = whole.substr(0, 1023);
        EXPECT_THAT(TakeTraced(), ElementsAre(std::wstring(cut.begin(), cut.end())));
    }
}

TEST_F(Report, WideTextIsCutAt1023Characters) {
    const std::wstring head = L"Operation \"Op\" returned error <eOutOfRange>, property: \"";
    for (const std::size_t length : {966u, 967u, 968u, 40000u}) {
        const std::wstring property(length, L'\u6f22');
        ReportPropertyError(base_types::eOutOfRange, "Op", property);
        const auto traced = TakeTraced();
        ASSERT_EQ(traced.size(), 1u);
        EXPECT_EQ(traced[0], (head + property + L"\"").substr(0, 1023)) << length;
    }
    ReportPropertyError(base_types::eOutOfRange, std::string(3000, 'x').c_str(), L"Gain");
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation \"" + std::wstring(1012, L'x')));
}

TEST_F(Report, CharactersThatNoCodePageHasReachTheTracerWhole) {
    const std::wstring odd = {L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0xFFFF),
                              L'b'};
    ReportPropertyError(base_types::ePropertyNotFound, "Op", odd);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(L"Operation \"Op\" returned error <ePropertyNotFound>, property: \"" +
                            odd + L"\""));
}

TEST_F(Report, CodesBeyondTheTableAreNumbersInTheText) {
    EXPECT_EQ(ReportFxError(static_cast<fx::_eError>(246), "Op"), 246u);
    EXPECT_EQ(ReportTarnexError(static_cast<tarnex::_eError>(11)), 11u);
    EXPECT_EQ(ReportPropertyError(static_cast<base_types::_eError>(0xFFFFFFFF), "Op", L"Gain"),
              0xFFFFFFFFu);
    EXPECT_THAT(
        TakeTraced(),
        ElementsAre(L"Operation \"Op\" returned error <246>", L"Operation returned error <11>",
                    L"Operation \"Op\" returned error <4294967295>, property: \"Gain\""));
}

TEST_F(Report, ExceptionLinesGoToTheDebuggerAlone) {
    helpers::ReportException(8, "GlobalFxFactory", 199, "tarnex::GlobalFXFactory::CreateFX");
    helpers::ReportUnknownException("PropertySet", 92, "base_types::PropertySet::GetProperties");
    helpers::ReportAssertion("CompScript", 7, "Read");
    EXPECT_THAT(TakeDebugged(),
                ElementsAre("Exception catched: (8) file: GlobalFxFactory, line: (199) name: "
                            "tarnex::GlobalFXFactory::CreateFX\n",
                            "Exception catched: (...) file: PropertySet, line: (92) name: "
                            "base_types::PropertySet::GetProperties\n",
                            "ASSERT in file: CompScript, line: (7) name: Read\n"));
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(Report, DebuggerLinesTakeNullAndLongTexts) {
    helpers::ReportException(0xFFFFFFFF, nullptr, -1, nullptr);
    const std::string name(4000, 'n');
    helpers::ReportUnknownException("f", 1, name.c_str());
    helpers::ReportAssertion(name.c_str(), 1, "f");
    const auto lines = TakeDebugged();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "Exception catched: (-1) file: , line: (-1) name: \n");
    EXPECT_EQ(lines[1].size(), 1023u);
    EXPECT_EQ(lines[2].size(), 1023u);
}

template <class Code, std::size_t count>
void CheckNames(const char* const (&names)[count]) {
    for (std::uint32_t code = 0; code < count; ++code) {
        EXPECT_EQ(ErrorName(static_cast<Code>(code)), names[code]) << code;
    }
    EXPECT_EQ(ErrorName(static_cast<Code>(count)), std::to_string(count));
    EXPECT_EQ(ErrorName(static_cast<Code>(0xFFFFFFFF)), "4294967295");
}

TEST(ErrorNames, EveryCodeHasItsPublishedNameAndOnePastTheEndIsANumber) {
    CheckNames<fx::_eError>(published::kEffectNames);
    CheckNames<tarnex::_eError>(published::kManagerNames);
    CheckNames<base_types::_eError>(published::kPropertyNames);
}

TEST(ErrorNames, SpellingsThatLogsRelyOn) {
    EXPECT_EQ(ErrorName(fx::eToManyLights), "eToManyLights");
    EXPECT_EQ(std::uint32_t{fx::eToManyLights}, 105u);
    EXPECT_EQ(std::uint32_t{fx::eNotEnoughtSourceStreams}, 144u);
    EXPECT_EQ(std::uint32_t{fx::eCantRenderTringles}, 166u);
    EXPECT_EQ(std::uint32_t{fx::eRenderingToSlow}, 176u);
    EXPECT_EQ(std::uint32_t{fx::eDeviceLosterror}, 181u);
    EXPECT_EQ(std::uint32_t{fx::eCouldNotCreateFX}, 12u);
    EXPECT_EQ(std::uint32_t{fx::eNotConnected}, 245u);
    EXPECT_EQ(ErrorName(base_types::ePointerCastFailure), "ePointerCastFailure");
    EXPECT_EQ(std::uint32_t{base_types::ePointerCastFailure}, 15u);
    EXPECT_EQ(std::uint32_t{base_types::eCannotCloneEffect}, 20u);
    EXPECT_EQ(ErrorName(tarnex::eVorelExceptionCatched), "eVorelExceptionCatched");
}

TEST_F(Report, ThreadsReportAtOnce) {
    constexpr int kRounds = 300;
    std::vector<std::thread> threads;
    std::map<std::wstring, int> expected;
    for (int i = 0; i < 8; ++i) {
        const std::string digit = std::to_string(i);
        const std::wstring wide(digit.begin(), digit.end());
        expected[L"Operation \"operation " + wide + L"\" returned error <eWrongFXIdx>"] = kRounds;
        expected[L"Operation \"operation " + wide +
                 L"\" returned error <ePropertyNotFound>, property: \"" + wide + L"\""] = kRounds;
        expected[L"Operation returned error <eGenericError>"] += kRounds;
        threads.emplace_back([digit, wide] {
            const std::string operation = "operation " + digit;
            for (int round = 0; round < kRounds; ++round) {
                EXPECT_EQ(ReportFxError(fx::eWrongFXIdx, operation.c_str()), fx::eWrongFXIdx);
                EXPECT_EQ(
                    ReportPropertyError(base_types::ePropertyNotFound, operation.c_str(), wide),
                    base_types::ePropertyNotFound);
                EXPECT_EQ(ReportTarnexError(tarnex::eGenericError), tarnex::eGenericError);
                helpers::ReportUnknownException("file", 7, operation.c_str());
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    std::map<std::wstring, int> lines;
    for (const std::wstring& line : TakeTraced()) ++lines[line];
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(TakeDebugged().size(), 8u * kRounds);
}

}  // namespace
