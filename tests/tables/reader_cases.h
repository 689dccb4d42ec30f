// Cases of the readers and printers that hold under every locale: run once as they are and once more with a
// comma for the decimal point. Each expects inside itself.
#pragma once

namespace reader_cases {

void CheckIntegerTexts();
void CheckFloatTexts();
void CheckLineFields();
void CheckWrittenFields();
void CheckDumpCounters();

} // namespace reader_cases
