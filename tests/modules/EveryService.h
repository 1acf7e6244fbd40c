#pragma once

/// Uses every service of the framework, the crisis log last, whose line then is the moment's name.
/// Ends the process as failed if one of them does not do its work. A moment comes once in a
/// process.
void useEveryService(const char* moment);
