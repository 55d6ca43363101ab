// Called once, with the global object, before any expression is compiled.
(function (global, maxLength) {
    "use strict";

    // Helpers for the authors of panels.
    global.clamp = function clamp(x, low, high) { return Math.min(Math.max(x, low), high); };
    global.scale = function scale(x, inLow, inHigh, outLow, outHigh) {
        return outLow + (x - inLow) * (outHigh - outLow) / (inHigh - inLow);
    };
    global.round = function round(x, digits) {
        const factor = Math.pow(10, digits || 0);
        return Math.round(x * factor) / factor;
    };

    // What runs after the evaluation, fills memory at once, keeps something of the last call, or
    // has failed with what no panel needs.
    ["Promise", "SharedArrayBuffer", "ArrayBuffer", "DataView", "Atomics", "Int8Array", "Uint8Array",
        "Uint8ClampedArray", "Int16Array", "Uint16Array", "Int32Array", "Uint32Array",
        "Float32Array", "Float64Array"].forEach(function (name) { delete global[name]; });
    Object.getOwnPropertyNames(RegExp).forEach(function (name) {
        if (name !== "prototype") { delete RegExp[name]; }
    });
    delete Array.prototype.copyWithin;

    // What cannot be interrupted while it runs.
    function bound(prototype, name, lengthOf) {
        const native = prototype[name];
        Object.defineProperty(prototype, name, {value: function () {
            if (lengthOf(this, arguments[0]) > maxLength) {
                throw new RangeError(name + "() on more than " + maxLength + " elements");
            }
            return native.apply(this, arguments);
        }});
    }
    ["fill", "includes"].forEach(function (name) {
        bound(Array.prototype, name, function (array) { return array.length; });
    });
    ["padStart", "padEnd"].forEach(function (name) {
        bound(String.prototype, name, function (text, length) { return length; });
    });
    bound(String.prototype, "repeat", function (text, count) { return text.length * count; });

    const seen = new Set();
    function freeze(object) {
        if ((typeof object !== "object" && typeof object !== "function") || object === null
            || seen.has(object)) {
            return;
        }
        seen.add(object);
        Object.getOwnPropertyNames(object).concat(Object.getOwnPropertySymbols(object))
            .forEach(function (name) {
                const property = Object.getOwnPropertyDescriptor(object, name);
                freeze(property.value);
                freeze(property.get);
                freeze(property.set);
            });
        freeze(Object.getPrototypeOf(object));
        Object.freeze(object);
    }
    freeze(global);
    // No property of the global object leads to these.
    freeze(Object.getPrototypeOf(function* () {}));
    [[][Symbol.iterator](), ""[Symbol.iterator](), new Set()[Symbol.iterator](),
        new Map()[Symbol.iterator]()].forEach(function (iterator) {
            freeze(Object.getPrototypeOf(iterator));
        });
})
