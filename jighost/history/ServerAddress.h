// The URL of a server's database, in which a password may stand.
#pragma once

#include <string>

/// Without name, password and options, such as postgresql://host/database. Throws EXIT_WRONG_USE
/// for a URL that the server's library could take apart in another way, and then show a part of the
/// password.
std::string ServerName(const std::string& url);
