#include "http_test_server.h"
