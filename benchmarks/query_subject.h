// What query_benchmark asks: the library, and other containers and a database with the same rows.
//
// A subject answers many questions of one kind in one call, so that the way to it costs next to nothing for
// each. An answer is 32 bits: an id, the bits of a float, or what is made of a longer answer; a subject that
// lacks a row gives the answer of the library. Nothing here allocates for an answer.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class CQtParamDistillery;

namespace benchmarks {

// A text in both forms. The wide one ends with a zero; whoever needs its length looks for that.
struct NameQuestion {
    wchar_t const* wide;
    std::string_view utf8;
};
struct BaseOrderQuestion {
    int mode;
    int gear;
};
struct OrderSourceQuestion {
    int mode;
    int channel;
    int rotor;
};

using Answers = std::span<std::uint32_t>;

class Subject {
public:
    explicit Subject(std::string name) : m_name(std::move(name)) {}
    Subject(Subject const&) = delete;
    Subject& operator=(Subject const&) = delete;
    virtual ~Subject() = default;

    std::string const& name() const { return m_name; }

    // The ids of locations; -1 on a miss.
    virtual void Ids(std::span<NameQuestion const> names, Answers answers) = 0;
    // The first characters of the names of locations; 0 on a miss.
    virtual void Names(std::span<int const> ids, Answers answers) = 0;
    // The whole name of a location, for checks.
    virtual std::wstring Name(int id) = 0;
    // The triggers of instrument parameters; -1 on a miss.
    virtual void Triggers(std::span<int const> parameters, Answers answers) = 0;
    // The base orders of gears: mode to physical mode, gear to physical gear, its base order.
    virtual void BaseOrders(std::span<BaseOrderQuestion const> gears, Answers answers) = 0;
    // The sums of the order sources that channels follow on rotors: mode to physical mode, rotor to speed
    // source, flags of the channel, and all rows of a range. Not answered by a container without ranges.
    virtual void OrderSources(std::span<OrderSourceQuestion const> rotors, Answers answers) = 0;
    virtual bool HasRanges() const { return true; }

private:
    std::string m_name;
};

// The library, and those beside it that this program was built with. All take their rows from the distillery,
// which must outlive them.
std::vector<std::unique_ptr<Subject>> Subjects(CQtParamDistillery& distillery);

// Each in a source of its own, which is built where its library is there.
std::unique_ptr<Subject> LibrarySubject(CQtParamDistillery& distillery);
std::unique_ptr<Subject> StdMapSubject(CQtParamDistillery const& distillery);
std::unique_ptr<Subject> AbslFlatHashMapSubject(CQtParamDistillery const& distillery);
std::unique_ptr<Subject> AbslBtreeMapSubject(CQtParamDistillery const& distillery);
std::unique_ptr<Subject> SqliteSubject(CQtParamDistillery const& distillery);

// How all subjects answer: question by question.
template <class Question, class Ask>
void AnswerAll(std::span<Question const> questions, Answers answers, Ask const& ask) {
    for (std::size_t index = 0; index < questions.size(); ++index)
        answers[index] = static_cast<std::uint32_t>(ask(questions[index]));
}

} // namespace benchmarks
