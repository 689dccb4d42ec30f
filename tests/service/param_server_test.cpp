#include <paramdb/service/param_server.h>

#include <gtest/gtest.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <thread>

namespace {

using ParamDb::CParameterTableSet;

class ParamServerTest : public LoadTest {
protected:
    MessageLog messages;
    CQtParamInstance instance;
};

TEST_F(ParamServerTest, ObjectIsOneForAllThreads) {
    CQtParamServer* objects[8] = {};
    std::vector<std::thread> threads;
    for (auto& object : objects)
        threads.emplace_back([&object] { object = &CQtParamServer::Object(); });
    for (auto& thread : threads)
        thread.join();
    for (auto const object : objects)
        EXPECT_EQ(object, &CQtParamServer::Object());
}

TEST_F(ParamServerTest, EmptySourcesFailWithoutMessage) {
    EXPECT_FALSE(instance.ReadTablesFromCandidateLake());
    EXPECT_FALSE(instance.Initialized());
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    EXPECT_EQ(CParameterTableSet::TableSet().size(), 0u);
}

TEST_F(ParamServerTest, CreateChangesNothing) {
    FillLake(VersionLines);
    CQtParamServer::Object().Create();
    EXPECT_FALSE(instance.Initialized());
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    CQtParamServer::Object().Create();
    EXPECT_TRUE(instance.Initialized());
}

TEST_F(ParamServerTest, NamedTextsOfALake) {
    FillLake(std::string(VersionLines) + "<QLearn><FLearnArcName>: \"learn archive.rla\" rest\n"
                                         "<QCalib><FCalibFileName>: calib.dat and more\n"
                                         "<QType><FBaseName>: \"open end\n"
                                         "<QType><FAliasName>:\n"
                                         "<QType><FAliasName>: second\n");
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(instance.LearnFileName(), L"learn archive.rla");
    EXPECT_EQ(instance.CalibFileName(), L"calib.dat");
    EXPECT_EQ(instance.BaseType(), L"open end");
    EXPECT_EQ(instance.AliasType(), L"");
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(ParamServerTest, NamedTextsOfATableSet) {
    auto& set = CParameterTableSet::TableSet();
    set[L"<DbDesign.CacheVersion>"] = {{{216}}};
    set[L"<DbDesign.CacheMinorVersion>"] = {{{1}}};
    set[L"<QLearn><FLearnArcName>"] = {{{L"learn", L"archive.rla"}}, {{L"second row"}}};
    set[L"<QType><FBaseName>"] = {{{L"six speed"}}};
    set[L"<QType><FAliasName>"] = {{{7}}};
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(instance.LearnFileName(), L"learn archive.rla");
    EXPECT_EQ(instance.CalibFileName(), L"");
    EXPECT_EQ(instance.BaseType(), L"six speed");
    EXPECT_EQ(instance.AliasType(), L"");
    ASSERT_EQ(set.count(L"<QCalib><FCalibFileName>"), 1u);
    EXPECT_TRUE(set[L"<QCalib><FCalibFileName>"].empty());
    EXPECT_EQ(messages.Take(),
              (std::vector<Message>{{8, 3,
                                     L"CQtParamStore::ReadTablesFromCandidateLake(): Value of "
                                     L"'<QType><FAliasName>' is no text\n"}}));
}

TEST_F(ParamServerTest, ATableSetWithOneTableHidesTheLake) {
    FillLake(VersionLines);
    CParameterTableSet::TableSet()[L"<TMode>"];
    EXPECT_FALSE(instance.ReadTablesFromCandidateLake());
    auto const taken = messages.Take();
    ASSERT_EQ(taken.size(), 1u);
    EXPECT_NE(taken[0].text.find(L"Table version -1.-1 "), std::wstring::npos);
    CParameterTableSet::TableSet().clear();
    EXPECT_TRUE(instance.ReadTablesFromCandidateLake());
}

TEST_F(ParamServerTest, RefusedLoadKeepsEverything) {
    FillLake(std::string(VersionLines) + "<QType><FBaseName>: good\n");
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    FillLake("<DbDesign.CacheVersion>: 217\n<QType><FBaseName>: bad\n");
    EXPECT_FALSE(instance.ReadTablesFromCandidateLake());
    EXPECT_TRUE(instance.Initialized());
    EXPECT_EQ(instance.BaseType(), L"good");
    EXPECT_EQ(messages.Take().size(), 1u);
}

TEST_F(ParamServerTest, HandlesShareOneStore) {
    CQtParamInstance const other(nullptr);
    CQtParamInstance const copy = instance;
    FillLake(std::string(VersionLines) + "<QType><FBaseName>: shared\n");
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_TRUE(other.Initialized());
    EXPECT_EQ(other.BaseType(), L"shared");
    EXPECT_EQ(copy.BaseType(), L"shared");
}

TEST_F(ParamServerTest, HandleOntoAnotherDistillery) {
    CQtParamDistillery distillery;
    CQtParamInstance other(&distillery);
    FillLake(std::string(VersionLines) + "<QType><FBaseName>: own\n");
    ASSERT_TRUE(other.ReadTablesFromCandidateLake());
    EXPECT_TRUE(other.Initialized());
    EXPECT_FALSE(instance.Initialized());
    EXPECT_EQ(instance.BaseType(), L"");
}

TEST_F(ParamServerTest, PurgeKeepsTheFlagAndClearKeepsTheTexts) {
    FillLake(std::string(VersionLines) + "<QLearn><FLearnArcName>: a.rla\n<TMode>: {\n1 idle\n}\n");
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(instance.Mode().size(), 1u);
    CQtParamServer::Object().Clear();
    EXPECT_FALSE(instance.Initialized());
    EXPECT_EQ(instance.LearnFileName(), L"a.rla");
    EXPECT_EQ(instance.Mode().size(), 0u);
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(instance.Mode().size(), 1u);
    instance.PurgeTables();
    EXPECT_TRUE(instance.Initialized());
    EXPECT_EQ(instance.LearnFileName(), L"");
    EXPECT_EQ(instance.Mode().size(), 0u);
}

TEST_F(ParamServerTest, ShowIdsInDialogsLivesInTheMessageSea) {
    EXPECT_FALSE(CQtParamInstance::ShowIdsInDialogs());
    CQtParamInstance::ShowIdsInDialogs(true);
    EXPECT_TRUE(CQtParamInstance::ShowIdsInDialogs());
    CQtParamInstance::ShowIdsInDialogs(false);
    EXPECT_FALSE(CQtParamInstance::ShowIdsInDialogs());
}

} // namespace
