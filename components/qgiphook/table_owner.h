// Ownership of tables: while the socket that owns a table is open, no other socket can change the
// table. From Linux 6.9 on a table can persist after its owner's socket is closed; older kernels
// would remove it, so no table is owned there. All in the network namespace of the calling thread.
#pragma once

#include <string>

namespace quillgate::gate {

// Tests it with a table of another name, which is deleted afterwards.
bool CanOwnTables();

// Makes the netlink socket the owner of the table ("inet quillgate"). A missing table is created
// empty; one that persisted after its owner was closed is taken over. A table that was created
// without an owner cannot get one and stays as it is.
void OwnTable(int socket, const std::string& table);

}  // namespace quillgate::gate
