#include <paramdb/tables/limit_rows.h>

void QVClavisUserNames::Clavis(QIdx5 const& key, QClavis& clavis) {
    clavis[1] = key[0];
    clavis[2] = key[1];
    clavis[3] = key[3];
    clavis[4] = key[4];
    clavis[5] = key[2];
}
