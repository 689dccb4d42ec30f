// A host whose parameters lie in a database: fetches a revision, loads it and says what it holds.
#include <paramdb/database.h>
#include <paramdb/paramdb.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: embed_database CONNECTION LOCAL-COPY\n", stderr);
        return 2;
    }
    // What is wrong with the data, the warning that the local copy is used, and why there is no import.
    PrWin::SetSink([](int, int, std::wstring const& text) { std::printf("message: %ls", text.c_str()); });

    std::string const connection = argv[1]; // "postgresql:host=db1 dbname=bench#gearbox"
    std::string const copy = argv[2];
    auto const import = ParamDb::ImportTables(
        std::wstring(connection.begin(), connection.end()), ParamDb::CParameterTableSet::TableSet(),
        {.timeout = std::chrono::seconds(5), .local_copy = {copy.begin(), copy.end()}});
    CQtParamInstance parameters;
    if (!import || !parameters.ReadTablesFromCandidateLake()) {
        std::puts("not loaded");
        return 1;
    }
    std::printf("loaded: revision %d of '%ls'%s, base type '%ls'\n",
                static_cast<int>(import->revision.number), import->revision.set.c_str(),
                import->is_local_copy ? " from the local copy" : "", parameters.BaseType().GetString());
    return 0;
}
