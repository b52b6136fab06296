// A part of Connection.h.
#include "platform/connection/Connection.h"
#include "platform/connection/Engine.h"

namespace
{
ReadSnapshot *g_snapshot = nullptr;
}

ReadSnapshot::ReadSnapshot(Connection &connection)
{
    if (g_snapshot || !connection.m_engine || !connection.m_engine->BeginReading())
        return;
    m_connection = &connection;
    g_snapshot = this;
}

ReadSnapshot::~ReadSnapshot()
{
    if (g_snapshot == this)
        EndRunning();
}

void ReadSnapshot::EndRunning()
{
    if (!g_snapshot)
        return;
    EngineErrors ignored; // nothing was written
    g_snapshot->m_connection->m_engine->Rollback(ignored);
    g_snapshot = nullptr;
}

void ReadSnapshot::Leave(const Connection &connection)
{
    if (g_snapshot && g_snapshot->m_connection == &connection)
        EndRunning();
}
