// The tables of triggers, each by the instrument class that it belongs to.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <string>
#include <vector>

namespace derivation {

/// A class of instruments whose parameters have triggers.
struct TriggerClass {
    int instrument;
    std::string tag;
    std::string row; // behind the parameter; T stands where the trigger does
};

/// All of them.
std::vector<TriggerClass> const& TriggerClasses();

/// The section of a lake that gives the parameter this trigger.
std::string TriggerSection(TriggerClass const& trigger_class, int parameter, int trigger);

/// Adds a row whose other numbers are none of the triggers in use. The instrument must be one of the classes.
void AddTriggerRow(CParamTables& tables, int instrument, int parameter, int trigger);

} // namespace derivation
