// Corrections of the tables themselves, made in place after each load.
#pragma once

struct CParamTables;

// Fills in the instruments of relative limits, bounds result codes, and converts the accumulation of older
// data. What is out of bounds is reported (category 8). False, without a message, if a relative limit is for
// a parameter that does not exist; the rows before it stay changed, and the later steps are left out.
bool RefineTables(CParamTables& tables);
