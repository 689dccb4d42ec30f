#include "query_subject.h"

#include <paramdb/query/param_instance.h>

#include <bit>

namespace benchmarks {
namespace {

class Library : public Subject {
public:
    explicit Library(CQtParamDistillery& distillery) : Subject("paramdb"), m_parameters(&distillery) {}

    void Ids(std::span<NameQuestion const> names, Answers answers) override {
        AnswerAll(names, answers,
                  [this](NameQuestion const& question) { return m_parameters.LocationId(question.wide); });
    }
    void Names(std::span<int const> ids, Answers answers) override {
        AnswerAll(ids, answers, [this](int id) { return *m_parameters.LocationName(id); });
    }
    std::wstring Name(int id) override { return m_parameters.LocationName(id); }
    void Triggers(std::span<int const> parameters, Answers answers) override {
        AnswerAll(parameters, answers, [this](int parameter) { return m_parameters.TriggerId(parameter); });
    }
    void BaseOrders(std::span<BaseOrderQuestion const> gears, Answers answers) override {
        AnswerAll(gears, answers, [this](BaseOrderQuestion const& question) {
            return std::bit_cast<std::uint32_t>(m_parameters.BaseOrder(question.mode, question.gear));
        });
    }
    void OrderSources(std::span<OrderSourceQuestion const> rotors, Answers answers) override {
        AnswerAll(rotors, answers, [this](OrderSourceQuestion const& question) {
            std::uint32_t sum = 0;
            auto [row, end] =
                m_parameters.OrderSourceRange(question.mode, question.channel, question.rotor, false);
            for (; row != end; ++row)
                sum += static_cast<std::uint32_t>(row->second.get<"referred_id">());
            return sum;
        });
    }

private:
    CQtParamInstance m_parameters;
};

} // namespace

std::unique_ptr<Subject> LibrarySubject(CQtParamDistillery& distillery) {
    return std::make_unique<Library>(distillery);
}

std::vector<std::unique_ptr<Subject>> Subjects(CQtParamDistillery& distillery) {
    std::vector<std::unique_ptr<Subject>> subjects;
    subjects.push_back(LibrarySubject(distillery));
    subjects.push_back(StdMapSubject(distillery));
#ifdef BENCHMARK_ABSL
    subjects.push_back(AbslFlatHashMapSubject(distillery));
    subjects.push_back(AbslBtreeMapSubject(distillery));
#endif
#ifdef BENCHMARK_SQLITE
    subjects.push_back(SqliteSubject(distillery));
#endif
    return subjects;
}

} // namespace benchmarks
