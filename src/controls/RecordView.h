#pragma once

#include <QString>

/// What a data function that reads a record fills first and last. The calls come in the order they are
/// declared in; what else the record shows stands between the two pairs.
class RecordView
{
public:
    virtual ~RecordView() = default;
    /// The record is being read: nothing can be edited, and `notice` stands on the form.
    virtual void ShowLoading(const QString &notice) = 0;
    /// There is no such record any more: `placeholder` takes the place of the name. Nothing follows.
    virtual void ShowDeleted(const QString &placeholder) = 0;
    /// Everything is read: the record can be worked on.
    virtual void ShowLoaded() = 0;
};
