#include <paramdb/service/param_server.h>

CQtParamServer& CQtParamServer::Object() {
    static CQtParamServer server;
    return server;
}

void CQtParamServer::Clear() {
    CQtParamStore::Clear();
    ClearInitialized();
}
