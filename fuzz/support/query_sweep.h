// Every question that the query object answers, asked over what is loaded: for ids, keys and names that rows
// have, their neighbours, and the limits. The number of questions is bounded, whatever the tables hold.
#pragma once

#include <paramdb/query/param_instance.h>

#include "answers.h"

#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

namespace fuzz {

// Ids to ask with, by the last word of the columns that hold them, such as "mode" or "channel".
class KnownIds {
public:
    explicit KnownIds(CQtParamInstance const& instance);

    // At most so many, in order, with both limits of 32 bits and -1 among them.
    std::vector<int> Of(std::string_view kind, std::size_t most) const;
    std::vector<QClavis> const& Keys() const { return m_keys; }

private:
    void Add(std::string_view column, int id);

    std::map<std::string_view, std::vector<int>> m_ids;
    std::vector<QClavis> m_keys;
};

void AskNames(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskKinds(CQtParamInstance& instance, KnownIds const& ids, Answers& answers);
void AskKeyTexts(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskDisplayTexts(CQtParamInstance& instance, KnownIds const& ids, Answers& answers);
void AskModes(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskRotors(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskDerived(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskIntervals(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskTriggers(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers);
void AskRows(CQtParamInstance const& instance, Answers& answers);

// All of them.
void AskEverything(CQtParamInstance& instance, Answers& answers);

} // namespace fuzz
