#pragma once

#include <netdb.h>
#include <sys/socket.h>
