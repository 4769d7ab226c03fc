// Ownership of tables: while the socket lives that owns a table, nobody else changes it. Kernels
// from 6.9 on keep an owned table when its socket is gone, if it was made to persist; older ones
// would remove it, so there nothing is owned. In the network namespace of the calling thread.
#pragma once

#include <string>

namespace quillgate::gate {

// Tries it with a table of another name, which is gone afterwards.
bool CanOwnTables();

// Makes the table ("inet quillgate") an owned one of the netlink socket behind that descriptor:
// creates it empty where there is none, and takes over one that persisted when its owner died. One
// that was made without an owner cannot get one and stays as it is.
void OwnTable(int socket, const std::string& table);

}  // namespace quillgate::gate
