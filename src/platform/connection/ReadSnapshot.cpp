// A part of Connection.h.
#include "platform/connection/Connection.h"
#include "platform/connection/Engine.h"

namespace
{
ReadSnapshot *g_running = nullptr;
}

ReadSnapshot::ReadSnapshot(Connection &connection)
{
    if (g_running || !connection.m_engine || !connection.m_engine->BeginReading())
        return;
    m_connection = &connection;
    g_running = this;
}

ReadSnapshot::~ReadSnapshot()
{
    if (g_running == this)
        EndRunning();
}

void ReadSnapshot::EndRunning()
{
    if (!g_running)
        return;
    EngineErrors ignored; // nothing was written
    g_running->m_connection->m_engine->Rollback(ignored);
    g_running = nullptr;
}

void ReadSnapshot::Leave(const Connection &connection)
{
    if (g_running && g_running->m_connection == &connection)
        EndRunning();
}
