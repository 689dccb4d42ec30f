// The queries for names take nothing from the heap, nor do those that are asked for each result.
//
// The replaced operator new serves all tests. It counts only where a test of this file asks it to, and only
// in the thread of that test.
#include <paramdb/query/param_instance.h>

#include "name_kinds.h"

#include <cstddef>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <thread>
#include <utility>

namespace {

thread_local bool is_counting = false;
thread_local std::size_t allocations = 0;

void* Allocate(std::size_t size) noexcept {
    if (is_counting)
        ++allocations;
    return std::malloc(size != 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
    if (void* const memory = Allocate(size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// All forms but those with an alignment, which go together among themselves.
void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::nothrow_t const&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::nothrow_t const&) noexcept {
    std::free(memory);
}

namespace {

// Counts while it lives.
class AllocationCount {
public:
    AllocationCount() {
        allocations = 0;
        is_counting = true;
    }
    AllocationCount(AllocationCount const&) = delete;
    AllocationCount& operator=(AllocationCount const&) = delete;
    ~AllocationCount() { is_counting = false; }

    std::size_t Value() const { return allocations; }
};

template <class Query>
std::size_t AllocationsOf(Query const& query) {
    AllocationCount const count;
    query();
    return count.Value();
}

TEST(Allocations, AreCounted) {
    EXPECT_EQ(AllocationsOf([] {}), 0u);
    EXPECT_EQ(AllocationsOf([] { CFixedText const text(L"text"); }), 1u);
    EXPECT_EQ(AllocationsOf([] {
                  CFixedText const one(L"one");
                  CFixedText const other(one);
              }),
              2u);
    {
        AllocationCount const count;
        EXPECT_EQ(count.Value(), 0u);
    }
    CFixedText const not_counted(L"text");
    EXPECT_EQ(AllocationsOf([] {}), 0u);
    std::size_t elsewhere = 99;
    std::thread([&] { elsewhere = AllocationsOf([] { CFixedText const text(L"text"); }); }).join();
    EXPECT_EQ(elsewhere, 1u);
    CFixedText moved(L"text");
    EXPECT_EQ(AllocationsOf([&] { CFixedText const target(std::move(moved)); }), 0u);
}

class QueryAllocations : public testing::Test {
protected:
    QueryAllocations() {
        std::wstring const longest(199, L'n');
        for (auto const& kind : names::Kinds) {
            auto& table = own.tables().*kind.table;
            table.Add(1, L"a name of more characters than fit into a short string");
            table.Add(2, longest.c_str());
            table.Add(3, L"");
        }
        for (int parameter = 1; parameter <= 3; ++parameter) {
            own.tables().InstrumentParam.insert(
                {parameter, QVInstrumentParam(1, longest.c_str(), 0, 0u, 0u)});
            own.tables().Trigger.insert({parameter, QVTrigger(longest.c_str(), 0)});
            own.tables().ChannelProperty.insert(
                {parameter, QVChannelProperty(static_cast<unsigned int>(parameter), 0)});
            own.tables().LocationProperty.insert({parameter, QVLocationProperty(4u, 0, 0)});
        }
        own.tables().ModeProperty.insert({1, QVModeProps(1, 0u, 0, 0)});
        own.AddParameter(0, 10, 0, 1000, 100, 1);
        own.AddParameter(1, 20, 0, 3e9f, 1e9f, 0);
        own.AddSignal(10, L"old", 6, 3);
        own.AddSignal(20, L"a unit of its own, with a text of some length", 1);
        EXPECT_TRUE(own.Build());
    }

    CQtParamInstance& instance() { return own.instance(); }
    int VirtualMode(int first, int second) {
        int const intervals[] = {first, second};
        int const states[] = {3, 0};
        return instance().VirtModeGenerateId(1, instance().VirtModeExtension(intervals, states));
    }

    OwnDistillery own;
};

TEST_F(QueryAllocations, NamesAndIds) {
    std::wstring const longest(199, L'n');
    wchar_t const* const sought[] = {L"a name of more characters than fit into a short string",
                                     longest.c_str(), L"",
                                     L"a name that is in none of the tables, nor any part of it"};
    for (auto const& kind : names::Kinds) {
        SCOPED_TRACE(kind.tag);
        for (auto const* const name : sought)
            EXPECT_EQ(AllocationsOf([&] { (instance().*kind.id)(name); }), 0u) << std::wstring(name).size();
        for (int const id : {1, 2, 3, 4, 0, -1, Lowest}) {
            EXPECT_EQ(AllocationsOf([&] { (instance().*kind.name)(id); }), 0u) << id;
            if (kind.is_valid != nullptr) {
                EXPECT_EQ(AllocationsOf([&] { (instance().*kind.is_valid)(id); }), 0u) << id;
            }
        }
        EXPECT_EQ(AllocationsOf([&] { (instance().*kind.tree)(); }), 0u);
    }
}

TEST_F(QueryAllocations, RowsAndElements) {
    std::wstring const longest(199, L'n');
    EXPECT_EQ(AllocationsOf([&] { instance().InstrumentParamId(longest.c_str(), 1); }), 0u);
    EXPECT_EQ(AllocationsOf([&] { instance().InstrumentParamId(longest.c_str(), 2); }), 0u);
    EXPECT_EQ(AllocationsOf([&] { instance().TriggerId(longest.c_str()); }), 0u);
    EXPECT_EQ(AllocationsOf([&] { instance().TriggerId(L"no trigger has this name of some length"); }), 0u);
    EXPECT_EQ(AllocationsOf([&] { instance().SensorConfigName().Idx(longest.c_str()); }), 0u);
    for (int const id : {1, 2, 3, 4, 0, -1, Lowest}) {
        SCOPED_TRACE(id);
        EXPECT_EQ(AllocationsOf([&] {
                      instance().InstrumentParamName(id);
                      instance().InstrumentParameterToInstrument(id);
                      instance().TriggerName(id);
                      instance().TriggerId(id);
                      instance().PhysModeId(id);
                      instance().IsVirtualMode(id);
                      instance().IsValidVirtualMode(id);
                      instance().SensorConfigName().Name(id);
                      instance().SensorConfigName().IsValidId(id);
                  }),
                  0u);
        for (int element = -1; element <= 6; ++element)
            EXPECT_EQ(AllocationsOf([&] {
                          instance().ClavisElementName(element, id);
                          instance().IdNameMap(static_cast<unsigned int>(element));
                      }),
                      0u)
                << element;
    }
}

TEST_F(QueryAllocations, GeneratedNames) {
    EXPECT_EQ(AllocationsOf([&] {
                  for (int const unknown : {0, -1, 17, Lowest})
                      instance().InstrumentName(unknown);
              }),
              0u);
    ASSERT_STREQ(instance().ModeName(VirtualMode(2, 1)),
                 L"a name of more characters than fit into a short string-uC"
                 L"\u00B7250kHz\u00B71500000000a unit of its own, with a text of some length");
    EXPECT_EQ(AllocationsOf([&] {
                  instance().ModeName(VirtualMode(2, 1));
                  instance().ModeName(VirtualMode(7, 2));
                  instance().ModeName(VirtualMode(-1, 0)); // no position
                  instance().ModeName(VirtualMode(0, -1));
                  instance().ModeName(VirtualMode(5, 0) + 4); // no physical mode
                  instance().ClavisElementName(Clavis::qMode, VirtualMode(3, 1));
              }),
              0u);
    // A name that fills the whole buffer.
    CQtParamDistillery::AutoModeNaming naming;
    naming.SeparatorText = std::wstring(1000, L'=');
    instance().SetAutoModeNaming(naming);
    EXPECT_EQ(AllocationsOf([&] { instance().ModeName(VirtualMode(2, 1)); }), 0u);
}

TEST_F(QueryAllocations, Classification) {
    QClavis const key(VirtualMode(2, 1), 1, 1, 1, 1, 1);
    for (int const id : {1, 2, 3, 4, 0, -1, 1001, 2001, Lowest}) {
        SCOPED_TRACE(id);
        EXPECT_EQ(AllocationsOf([&] {
                      CQtParamInstance::ResultType(id);
                      CQtParamInstance::ScalarInstrumentToTrackInstrument(id);
                      CQtParamInstance::TrackInstrumentToScalarInstrument(id);
                      instance().IsSingleValueInstrument(id);
                      instance().IsTrackInstrument(id);
                      instance().IsSpectrumInstrument(id);
                      instance().Is2dDataInstrument(id);
                      instance().ChannelResamplingType(id);
                      instance().ChannelIsSync(id);
                      instance().ChannelIsMix(id);
                      instance().ChannelIsFix(id);
                      instance().LocationPropertyFlag(id);
                      instance().ChannelFlags(id, id);
                      instance().BaseChannel(id, id);
                      instance().ParentChannel(id, id);
                      instance().BaseModeClavis(key);
                      instance().IpMultipleMixLocs();
                  }),
                  0u);
    }
}

// Beyond the text that is handed out nothing is taken.
TEST_F(QueryAllocations, KeyTexts) {
    for (int const id : {1, 2, 3, 4, -1}) {
        SCOPED_TRACE(id);
        QClavis const key(id, id, id, id, id, id);
        instance().FormatClavisTextNice(key, true, L"/");
        EXPECT_LE(AllocationsOf([&] { instance().FormatClavisTextNice(key, true, L"/"); }), 1u);
        EXPECT_LE(AllocationsOf([&] { instance().FormatClavisTextNice(key.ToClavis(), false, L"/"); }), 1u);
        CString out;
        instance().FormatInstrParamText(out, key);
        EXPECT_LE(AllocationsOf([&] { instance().FormatInstrParamText(out, key); }), 1u);
        EXPECT_LE(AllocationsOf([&] { instance().FormatInstrParamText(out, id, id); }), 1u);
        instance().FormatLocaChanText(out, key, true);
        EXPECT_LE(AllocationsOf([&] { instance().FormatLocaChanText(out, key, true); }), 1u);
        EXPECT_LE(AllocationsOf([&] { instance().FormatLocaChanText(out, id, id, false); }), 1u);
    }
    QClavis const key(VirtualMode(2, 1), 1, 1, 1, 1, 1);
    instance().FormatClavisTextNice(key, true, L"/");
    EXPECT_EQ(AllocationsOf([&] { instance().FormatClavisTextNice(key, true, L"/"); }), 1u);
}

} // namespace
