#include "task.h"

namespace frctl {

Task alone(const std::function<Output()>& run)
{
    Task task;
    task.alone = run;
    return task;
}

Task onRegister(const std::function<Output(AbstractFrDriver&)>& run)
{
    Task task;
    task.onRegister = run;
    return task;
}

Task onDesk(const std::function<Output(sale::CashDesk&)>& run)
{
    Task task;
    task.onDesk = run;
    return task;
}

} // namespace frctl
