// The rows of the tables that say how results are judged and named: polygons, limits, errors, learning,
// texts.
//
// A column without a fixed use is called value_N, N being its place in the row.
#pragma once

#include <paramdb/keys/q_clavis.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/row.h>

class QVIpLearnParameter
    : public QVRow<QInt<"value_1">, QInt64<"value_2">, QUnsigned<"value_3">, QInt64<"value_4">> {
public:
    using QVRow::QVRow;
};

class QVLimSValue : public QVRow<QInt<"value_1">, QFloat<"value_2">, QFloat<"value_3">> {
public:
    using QVRow::QVRow;
};

class QVLimCValue
    : public QVRow<QInt<"value_1">, QInt<"value_2">, QInt<"value_3">, QInt<"value_4">, QInt<"value_5">> {
public:
    using QVRow::QVRow;
};

class QVClassIdName : public QVRow<QInt<"value_1">, QText<"name">> {
public:
    using QVRow::QVRow;
};

class QVIpY : public QVRow<QFloat<"y">> {
public:
    using QVRow::QVRow;
};

class QVIpPolygonProperty : public QVRow<QInt<"value_1">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVLimArea : public QVRow<QInt<"value_1">, QFloat<"value_2">, QFloat<"value_3">> {
public:
    using QVRow::QVRow;
};

class QVRelativeLimit : public QVRow<QFloat<"value_1">, QFloat<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVErrorCode
    : public QVRow<QInt<"value_1">, QText<"value_2">, QInt<"value_3">, QInt<"value_4">, QInt<"value_5">> {
public:
    using QVRow::QVRow;
};

class QVExternalError : public QVRow<QInt<"value_1">, QInt<"value_2">, QInt<"value_3">, QInt<"value_4">,
                                     QInt<"value_5">, QInt<"value_6">, QInt<"value_7">> {
public:
    using QVRow::QVRow;
};

class QVErrorGroup : public QVRow<QInt<"result_code">, QInt<"value_2">, QText<"value_3">, QText<"value_4">> {
public:
    using QVRow::QVRow;
};

class QVShadowGroupProperty : public QVRow<QInt<"value_1">> {
public:
    using QVRow::QVRow;
};

class QVClavisUserNames : public QVRow<QText<"value_1">, QInt<"value_2">, QInt<"value_3">> {
public:
    using QVRow::QVRow;

    // Puts the elements of a key of user names where a clavis has them. The mode stays as it is: the key has
    // none.
    static PARAMDB_API void Clavis(QIdx5 const& key, QClavis& clavis);
};

class QVAuxStrings : public QVRow<QText<"value_1">> {
public:
    using QVRow::QVRow;
};

class QVLearnProcedures : public QVRow<QInt<"value_1">, QUnsigned<"value_2">, QFloat<"value_3">,
                                       QText<"name">, QFloat<"value_5">> {
public:
    using QVRow::QVRow;
};
