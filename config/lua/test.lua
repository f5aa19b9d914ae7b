-- test.lua: one value of each type, for the self-test.

Test = {
    param1 = 0.25,
    param2 = "test1",
    param3 = 1000,
    param4 = true,
    param5 = {
        param1 = 22,
        param2 = 1.5,
        param3 = "test2",
        param4 = false,
    },
}
