#include <robotconnection/connection_manager.h>
