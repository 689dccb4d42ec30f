// Every question that the query object answers, asked over the data that is loaded.
#pragma once

#include <paramdb/query/param_instance.h>

#include "answer_book.h"
#include "random_lake.h"

namespace equality {

void AskNames(CQtParamInstance const& instance, AnswerBook& book);
void AskClassification(CQtParamInstance& instance, AnswerBook& book);
void AskKeyTexts(CQtParamInstance const& instance, Random& random, AnswerBook& book);
// In every language.
void AskDisplayTexts(CQtParamInstance& instance, AnswerBook& book);
void AskModes(CQtParamInstance& instance, Random& random, AnswerBook& book);
void AskRotors(CQtParamInstance const& instance, AnswerBook& book);
void AskChannelsAndPolygons(CQtParamInstance const& instance, AnswerBook& book);
void AskIntervals(CQtParamInstance const& instance, Random& random, AnswerBook& book);
void AskTriggers(CQtParamInstance const& instance, Random& random, AnswerBook& book);
void AskNumbersAndOrders(Random& random, AnswerBook& book);

} // namespace equality
