#include <paramdb/storage/parameter_lake.h>

CLake& CParameterLake::Lake() {
    static CLake lake;
    return lake;
}
