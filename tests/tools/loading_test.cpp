#include "tests/tools/command_run.h"
#include "tools/loading.h"

using namespace paramdb::tools;

namespace {

std::string const Good = "<DbDesign.CacheVersion>: 216\n"
                         "<DbDesign.CacheMinorVersion>: 3\n"
                         "<QLearn><FLearnArcName>: \"learn archive\"\n"
                         "<QCalib><FCalibFileName>: bench.cal\n"
                         "<QType><FBaseName>: base\n"
                         "<QType><FAliasName>: alias\n"
                         "<TMode>: {\n"
                         "\t1 \"Idle\"\n"
                         "\t2 \"Warm up\"\n"
                         "}\n"
                         "<TTrigger>: {\n"
                         "\t1 \"Speed\" 1\n"
                         "}\n";

using LoadingTest = CommandTest;

Load LoadWith(LoadResult result, MessageCounts const& messages) {
    Load load;
    load.result = result;
    load.messages = messages;
    return load;
}

} // namespace

TEST_F(LoadingTest, FillsEverything) {
    std::ostringstream err;
    auto const load = LoadFiles({File(u8"good.lake", Good)}, err);
    ASSERT_TRUE(load.has_value());
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(load->sources.files.size(), 1U);
    EXPECT_EQ(load->major, 216);
    EXPECT_EQ(load->minor, 3);
    EXPECT_EQ(load->result, LoadResult::Complete);
    EXPECT_EQ(load->texts.learn_file, L"learn archive");
    EXPECT_EQ(load->texts.calib_file, L"bench.cal");
    EXPECT_EQ(load->texts.base_type, L"base");
    EXPECT_EQ(load->texts.alias_type, L"alias");
    ASSERT_TRUE(load->tables.has_value());
    EXPECT_EQ(load->tables->tables, 2U);
    EXPECT_EQ(load->tables->all_tables, 103U);
    EXPECT_EQ(load->tables->rows, 3U);
    EXPECT_EQ(load->messages, MessageCounts());
    EXPECT_TRUE(CQtParamInstance().Initialized());
}

TEST_F(LoadingTest, ForgetsTheLoadBefore) {
    std::ostringstream err;
    ASSERT_TRUE(LoadFiles({File(u8"good.lake", Good)}, err));
    auto const refused = LoadFiles({File(u8"old.lake", "<DbDesign.CacheVersion>: 217\n")}, err);
    ASSERT_TRUE(refused.has_value());
    EXPECT_EQ(refused->major, 217);
    EXPECT_EQ(refused->minor, 0);
    EXPECT_EQ(refused->result, LoadResult::Refused);
    EXPECT_EQ(refused->texts.learn_file, L"");
    EXPECT_EQ(refused->texts.alias_type, L"");
    EXPECT_FALSE(refused->tables.has_value());
    EXPECT_EQ(refused->messages, (MessageCounts{{{8, 4}, 1}}));
    EXPECT_FALSE(CQtParamInstance().Initialized());
}

TEST_F(LoadingTest, AFaultyFileLeavesNothingLoaded) {
    std::ostringstream err;
    ASSERT_TRUE(LoadFiles({File(u8"good.lake", Good)}, err));
    EXPECT_FALSE(LoadFiles({Name(u8"missing.lake")}, err).has_value());
    EXPECT_FALSE(CQtParamInstance().Initialized());
    EXPECT_EQ(CQtParamInstance().BaseType(), L"");
    EXPECT_TRUE(CParameterLake::Lake().empty());
}

TEST_F(LoadingTest, CountsTheRowsOfAnIncompleteLoad) {
    std::ostringstream err;
    std::string const incongruent = Good + "<TApplicationSignal>: {\n\t1 \"Speed\"\n}\n";
    auto const load = LoadFiles({File(u8"incongruent.lake", incongruent)}, err);
    ASSERT_TRUE(load.has_value());
    EXPECT_EQ(load->result, LoadResult::Incomplete);
    ASSERT_TRUE(load->tables.has_value());
    EXPECT_EQ(load->tables->tables, 3U);
    EXPECT_EQ(load->tables->rows, 4U);
}

TEST_F(LoadingTest, ReadsTheFilesAlsoWhereATableSetIsFilled) {
    ParamDb::CParameterTableSet::TableSet()[L"<TMode>"];
    std::ostringstream err;
    auto const load = LoadFiles({File(u8"good.lake", Good)}, err);
    ASSERT_TRUE(load.has_value());
    EXPECT_EQ(load->result, LoadResult::Complete);
    EXPECT_TRUE(ParamDb::CParameterTableSet::TableSet().empty());
}

TEST(LoadExitCode, TellsCleanFromFindingsFromNoLoad) {
    struct Case {
        LoadResult result;
        MessageCounts messages;
        ExitCode code;
    };
    Case const cases[] = {
        {LoadResult::Complete, {}, ExitCode::Clean},
        {LoadResult::Complete, {{{8, 1}, 3}}, ExitCode::Clean},
        {LoadResult::Complete, {{{8, 3}, 1}}, ExitCode::Findings},
        {LoadResult::Complete, {{{16, 4}, 1}}, ExitCode::Findings},
        {LoadResult::Incomplete, {}, ExitCode::Findings},
        {LoadResult::Incomplete, {{{8, 3}, 1}}, ExitCode::Findings},
        {LoadResult::Refused, {{{8, 4}, 1}}, ExitCode::NoLoad},
        {LoadResult::Refused, {}, ExitCode::NoLoad},
    };
    for (Case const& test : cases)
        EXPECT_EQ(ExitCodeOf(LoadWith(test.result, test.messages)), test.code);
}
