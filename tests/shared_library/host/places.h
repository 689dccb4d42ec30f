// The objects that one process has one of, as the part that includes this finds them.
#pragma once

#include <paramdb/controls.h>
#include <paramdb/paramdb.h>
#include <paramdb/platform/framework/message_queue.h>

#include "modules.h"

inline Places FindPlaces() {
    return {&CParameterLake::Lake(),
            &ParamDb::CParameterTableSet::TableSet(),
            &CQtParamServer::Object(),
            &CSeaBase::MessagesSea(),
            &paramdb::TreeMemory(),
            &CQtParamInstance().Mode(),
            WM_PENTADCTRL_SELCHANGED,
            paramdb::RegisteredMessage(L"paramdb shared library test"),
            static_cast<int>(CLibMgr::GetLanguage())};
}
