#pragma once

#include "main/core_services.h"

namespace lexiquill {

class HttpClient;
class OnlineDictionaryService;
class SyncManager;
class UpdateManager;

template <> HttpClient &shared<HttpClient>();
template <> OnlineDictionaryService &shared<OnlineDictionaryService>();
template <> SyncManager &shared<SyncManager>();
template <> UpdateManager &shared<UpdateManager>();

} // namespace lexiquill
