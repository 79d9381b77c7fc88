#include "host/objects/ConfirmationRequest.h"

#include "host/objects/DiskText.h"

#include <utility>

namespace host {

void ConfirmationRequest::ask(Confirmation question)
{
    question_ = std::move(question);
    Q_EMIT changed();
}

void ConfirmationRequest::withdraw()
{
    if (!question_)
        return;
    question_.reset();
    Q_EMIT changed();
}

QString ConfirmationRequest::operation() const
{
    return question_ ? question_->loss.operation.translated() : QString();
}

QString ConfirmationRequest::disk() const
{
    return question_ ? diskLine(*question_) : QString();
}

QStringList ConfirmationRequest::losses() const
{
    return question_ ? lossLines(question_->loss) : QStringList();
}

void ConfirmationRequest::answer(bool confirmed)
{
    if (!question_)
        return;
    withdraw();
    Q_EMIT answered(confirmed);
}

QString diskLine(const Confirmation& question)
{
    QStringList parts{question.device, question.model, sizeText(question.size)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

} // namespace host
