// The benchmark harness: data, paired timing, the bandwidth probe and the
// Google Benchmark registration of every case.
//
// A case is one workload at one element type, order, layout, count and
// thread count.  All contenders of a case (the library, the peers of both
// builds, the library on one thread when the case has two, and the copy
// probe for streaming cases) run on the same arrays, in rounds: every round
// times each contender once, in an order that rotates from round to round,
// and the figures are medians over rounds.  Ratios are medians of the per
// round ratios, so a burst of load from other processes hits both sides of
// a ratio alike.
#include <benchmark/benchmark.h>
#include <emmintrin.h>
#include <omp.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "harness.h"

namespace kb {

std::vector<WorkloadDef>& registry()
{
    static std::vector<WorkloadDef> defs;
    return defs;
}

bool register_workload(const WorkloadDef& def)
{
    registry().push_back(def);
    return true;
}

namespace {

// --- options (--kb_name=value, taken out of argv before Google Benchmark) ---

struct Options {
    std::vector<int> counts{1000, 10000, 100000, 1000000};
    std::vector<int> orders{3, 4, 5, 6};
    std::vector<int> elems{4, 8};
    std::vector<int> strides{1, 2};
    std::vector<int> threads{1, 2};
    std::vector<std::string> workloads;  // empty: all
    double budgetMs = 400;               // measuring time per case, all contenders
    int minRounds = 5, maxRounds = 61;
    double minSampleMs = 2;              // one timed sample repeats the call up to this
    double copyBytes = 1e8;              // bandwidth probe: bytes copied per sample
};
Options opt;

std::vector<std::string> split_list(const std::string& s)
{
    std::vector<std::string> out;
    std::size_t at = 0;
    while (at <= s.size()) {
        const std::size_t comma = s.find(',', at);
        const std::size_t end = comma == std::string::npos ? s.size() : comma;
        if (end > at) out.push_back(s.substr(at, end - at));
        at = end + 1;
    }
    return out;
}

std::vector<int> int_list(const std::string& s)
{
    std::vector<int> out;
    for (const auto& x : split_list(s)) out.push_back(int(std::atof(x.c_str())));
    return out;
}

bool take_option(const std::string& arg)
{
    auto value = [&](const char* name, std::string& v) {
        const std::string prefix = std::string("--kb_") + name + "=";
        if (arg.compare(0, prefix.size(), prefix) != 0) return false;
        v = arg.substr(prefix.size());
        return true;
    };
    std::string v;
    if (value("counts", v)) opt.counts = int_list(v);
    else if (value("orders", v)) opt.orders = int_list(v);
    else if (value("threads", v)) opt.threads = int_list(v);
    else if (value("workloads", v)) opt.workloads = split_list(v);
    else if (value("budget_ms", v)) opt.budgetMs = std::atof(v.c_str());
    else if (value("min_rounds", v)) opt.minRounds = std::atoi(v.c_str());
    else if (value("max_rounds", v)) opt.maxRounds = std::atoi(v.c_str());
    else if (value("types", v)) {
        opt.elems.clear();
        for (const auto& t : split_list(v)) opt.elems.push_back(t == "64f" ? 8 : 4);
    } else if (value("layouts", v)) {
        opt.strides.clear();
        for (const auto& l : split_list(v)) opt.strides.push_back(l == "stride2" ? 2 : 1);
    } else return false;
    return true;
}

// --- data ---------------------------------------------------------------------

// One growable block, 64-byte aligned.  Filled blocks hold random values in
// [-4, 4) of the element type they were filled for.
struct Block {
    void* p = nullptr;
    std::size_t bytes = 0;
    int filledAs = 0;  // 0: not filled, else element size
    ~Block() { std::free(p); }

    void* get(std::size_t need, int fillElem)
    {
        if (need <= bytes && fillElem == filledAs) return p;
        if (need > bytes) {
            std::free(p);
            bytes = (need + 63) / 64 * 64;
            p = std::aligned_alloc(64, bytes);
            if (!p) {
                std::fprintf(stderr, "kelm_bench: cannot allocate %zu bytes\n", bytes);
                std::exit(1);
            }
            filledAs = 0;
        }
        if (fillElem == 0) {
            std::memset(p, 0, bytes);  // touch every page once, outside the timing
        } else {
            std::uint64_t s = 0x9e3779b97f4a7c15ull ^ bytes;
            auto next = [&] {
                s ^= s << 13, s ^= s >> 7, s ^= s << 17;
                return double(s >> 11) * (1.0 / 9007199254740992.0) * 8 - 4;
            };
            if (fillElem == 4)
                for (std::size_t i = 0; i < bytes / 4; ++i) static_cast<float*>(p)[i] = float(next());
            else
                for (std::size_t i = 0; i < bytes / 8; ++i) static_cast<double*>(p)[i] = next();
        }
        filledAs = fillElem;
        return p;
    }
};

// The largest case of each role decides the block sizes, so that the blocks
// are filled once per element type and not at every case.
struct Data {
    Block a, b, d, f, idx, work, spd, e;
    std::size_t maxMat[9] = {}, maxVec[9] = {}, maxIdx = 0;
} data;

// The symmetric eigen workloads need symmetric matrices: before each such
// case the case's objects get their lower triangles from their upper ones
// (the values stay in [-4, 4), so the other workloads are not affected).
// A matrix whose determinant is near zero would stop the library's array at
// a singular status, so its diagonal is moved by 1 until it is clearly not.
template <class T>
double det_of(const T* x, int n, int es)
{
    double m[6][6], det = 1;
    for (int i = 0; i < n; ++i)
        for (int c = 0; c < n; ++c) m[i][c] = x[std::size_t(i * n + c) * es];
    for (int q = 0; q < n; ++q) {
        int p = q;
        for (int i = q + 1; i < n; ++i)
            if (std::abs(m[i][q]) > std::abs(m[p][q])) p = i;
        if (m[p][q] == 0) return 0;
        if (p != q) std::swap(m[p], m[q]), det = -det;
        det *= m[q][q];
        for (int i = q + 1; i < n; ++i)
            for (int c = q + 1; c < n; ++c) m[i][c] -= m[i][q] / m[q][q] * m[q][c];
    }
    return det;
}
template <class T>
void symmetrise_objects(T* a, int n, int es, int count)
{
    const std::size_t ms = std::size_t(n) * n * es;
    for (std::size_t k = 0; k < std::size_t(count); ++k) {
        T* x = a + k * ms;
        for (int i = 0; i < n; ++i)
            for (int c = i + 1; c < n; ++c) x[std::size_t(c * n + i) * es] = x[std::size_t(i * n + c) * es];
        for (int tries = 0; tries < 8 && std::abs(det_of(x, n, es)) < 0.01; ++tries)
            for (int i = 0; i < n; ++i) x[std::size_t(i * n + i) * es] += T(1);
    }
}

// --- timing -------------------------------------------------------------------

using Clock = std::chrono::steady_clock;

template <class F>
double seconds(F&& f)
{
    const auto t0 = Clock::now();
    f();
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    const std::size_t m = v.size() / 2;
    return v.size() % 2 ? v[m] : 0.5 * (v[m - 1] + v[m]);
}

// --- the bandwidth probe ------------------------------------------------------

// A STREAM-style copy: c[i] = a[i] with ordinary 16-byte loads and stores
// (no streaming stores, as the library's kernels), split over threads.
struct CopyProbe {
    Block src, dst;
    void run(int threads)
    {
        const std::size_t bytes = std::size_t(opt.copyBytes) / 64 * 64;
        const auto* s = static_cast<const __m128i*>(src.get(bytes, 8));
        auto* d = static_cast<__m128i*>(dst.get(bytes, 0));
        const std::ptrdiff_t vectors = std::ptrdiff_t(bytes / 16);
#pragma omp parallel for num_threads(threads) schedule(static) if (threads > 1)
        for (std::ptrdiff_t i = 0; i < vectors; ++i) _mm_storeu_si128(d + i, _mm_loadu_si128(s + i));
        benchmark::ClobberMemory();
    }
    double bytes_moved() const { return 2 * double(std::size_t(opt.copyBytes) / 64 * 64); }
} copyProbe;

// --- one case -----------------------------------------------------------------

struct Case {
    const WorkloadDef* def;
    int elem, n, es, count, threads;
};

const char* type_name(int elem) { return elem == 4 ? "32f" : "64f"; }
const char* layout_name(int es) { return es == 1 ? "contig" : "stride2"; }

std::string case_name(const Case& c)
{
    return std::string(c.def->name) + "/" + type_name(c.elem) + "/n:" + std::to_string(c.n) + "/" +
           layout_name(c.es) + "/count:" + std::to_string(c.count) + "/threads:" + std::to_string(c.threads);
}

bool vector_operand(Workload w)
{
    return w == Workload::MulMava || w == Workload::LU || w == Workload::CrossVava || w == Workload::SaxpyVava ||
           w == Workload::LCombVava || w == Workload::GaxpyMva || w == Workload::Chol || w == Workload::QR;
}
bool scalar_result(Workload w)
{
    return w == Workload::Det || w == Workload::DotVava || w == Workload::L2Norm || w == Workload::FrobNorm ||
           w == Workload::Trace;
}

// Symmetric positive definite matrices for the Cholesky workload, rewritten
// for each case's order and layout: lower entries in [-1, 1), n + 1 on the
// diagonal (strictly diagonally dominant).  The upper triangle is not read.
template <class T>
void fill_spd(T* a, int n, int es, int count)
{
    std::uint64_t s = 0x2545f4914f6cdd1dull;
    for (std::ptrdiff_t k = 0; k < count; ++k)
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j) {
                s ^= s << 13, s ^= s >> 7, s ^= s << 17;
                const double v = i == j ? n + 1 : double(s >> 11) * (1.0 / 9007199254740992.0) * 2 - 1;
                a[(k * n * n + i * n + j) * es] = T(v);
            }
}

Job make_job(const Case& c)
{
    Job j{};
    j.elem = c.elem;
    j.n = c.n;
    j.count = c.count;
    j.es = c.es;
    j.threads = c.threads;
    j.c = 1.5;
    const std::size_t mats = data.maxMat[c.elem], vecs = data.maxVec[c.elem];
    const Workload w = c.def->id;
    j.a = data.a.get(mats, c.elem);
    j.b = data.b.get(std::max(mats, vecs), c.elem);
    j.d = data.d.get(std::max(mats, vecs), data.d.filledAs ? data.d.filledAs : 0);
    if (w == Workload::Chol) {
        void* spd = data.spd.get(mats, c.elem);
        if (c.elem == 4) fill_spd(static_cast<float*>(spd), c.n, c.es, c.count);
        else fill_spd(static_cast<double*>(spd), c.n, c.es, c.count);
        j.a = spd;
    }
    if (w == Workload::EigSymValues || w == Workload::EigSymVectors) {
        if (c.elem == 4) symmetrise_objects(static_cast<float*>(const_cast<void*>(j.a)), c.n, c.es, c.count);
        else symmetrise_objects(static_cast<double*>(const_cast<void*>(j.a)), c.n, c.es, c.count);
    }
    if (w == Workload::LU || w == Workload::Chol || w == Workload::EigSymVectors) {
        j.f = data.f.get(mats, data.f.filledAs ? data.f.filledAs : 0);
        j.idx = static_cast<int*>(data.idx.get(data.maxIdx, data.idx.filledAs ? data.idx.filledAs : 0));
    }
    if (w == Workload::QR) j.f = data.f.get(mats, data.f.filledAs ? data.f.filledAs : 0);
    if (w == Workload::EigVal || w == Workload::EigVec) {  // values: real parts in f, imaginary in e
        j.f = data.f.get(mats, data.f.filledAs ? data.f.filledAs : 0);
        j.e = data.e.get(mats, data.e.filledAs ? data.e.filledAs : 0);
    }
    j.work = data.work.get(std::size_t(c.n) * (3 * c.n + 5) * 8, 0);
    return j;
}

// Where a contender's results are: (offset in elements, how many) for object k.
struct Results {
    Workload w;
    int n, es;
    std::ptrdiff_t at(int k, int e) const
    {
        if (scalar_result(w)) return k;
        if (w == Workload::EigSymValues || w == Workload::EigSymVectors) return std::ptrdiff_t(k) * n + e;  // values
        const int per = per_object();
        return (std::ptrdiff_t(k) * per + e) * es;
    }
    int per_object() const
    {
        if (w == Workload::EigSymValues || w == Workload::EigSymVectors) return n;
        return scalar_result(w) ? 1 : w == Workload::Affine ? 3 : vector_operand(w) ? n : n * n;
    }
};

template <class T>
std::vector<double> snapshot(const Job& j, const Results& r, int objects)
{
    std::vector<double> out;
    const T* d = static_cast<const T*>(j.d);
    for (int k = 0; k < objects; ++k)
        for (int e = 0; e < r.per_object(); ++e) out.push_back(d[r.at(k, e)]);
    return out;
}

// Fraction of the checked objects whose results differ beyond the type's
// tolerance from the plain loops' (a wrong argument list shows up here).
double disagreement(const std::vector<double>& ref, const std::vector<double>& got, int per, int elem)
{
    const double tol = elem == 4 ? 2e-3 : 1e-9;
    int bad = 0, objects = int(ref.size()) / per;
    for (int k = 0; k < objects; ++k) {
        double scale = 1, err = 0;
        for (int e = 0; e < per; ++e) scale = std::max({scale, std::abs(ref[k * per + e]), std::abs(got[k * per + e])});
        for (int e = 0; e < per; ++e) {
            const double x = ref[k * per + e], y = got[k * per + e];
            err = std::max(err, std::isfinite(x) && std::isfinite(y) ? std::abs(x - y) : (x == y ? 0 : 1e300));
        }
        if (!(err <= tol * scale)) ++bad;
    }
    return objects ? double(bad) / objects : 0;
}

struct Contender {
    Contender(const char* n, std::function<void()> f, bool peer = false, bool copy = false)
        : name(n), run(std::move(f)), isPeer(peer), isCopy(copy) {}
    const char* name;
    std::function<void()> run;
    bool isPeer, isCopy;
    int reps = 1;
    std::vector<double> t;  // seconds per sample, one per round
};

void run_case(benchmark::State& state, Case c)
{
    const Job job = make_job(c);
    const WorkloadDef& def = *c.def;
    kelStatus libStatus = kelOk;

    std::vector<Contender> cs;
    cs.push_back({"lib", [&, job] {
                      kelSetNumThreads(c.threads);
                      const kelStatus s = def.lib(job);
                      if (s != kelOk) libStatus = s;
                  }});
    struct NamedSet {
        const char* plain;
        const char* eigen;
        const PeerSet& set;
    };
    const NamedSet sets[] = {{"plain", "eigen", peers_target()}, {"plain_nat", "eigen_nat", peers_native()}};
    for (const auto& s : sets) {
        if (PeerFn f = s.set.plain(def.id, c.elem, c.n, c.es)) cs.push_back({s.plain, [f, job] { f(job); }, true});
        if (PeerFn f = s.set.eigen(def.id, c.elem, c.n, c.es)) cs.push_back({s.eigen, [f, job] { f(job); }, true});
    }
    if (c.threads > 1) {
        cs.push_back({"lib_1t", [&, job] {
                          kelSetNumThreads(1);
                          def.lib(job);
                      }});
        // The plain loops on one thread tell how far two threads can scale on
        // the machine as loaded now.
        Job one = job;
        one.threads = 1;
        if (PeerFn f = peers_target().plain(def.id, c.elem, c.n, c.es)) cs.push_back({"plain_1t", [f, one] { f(one); }});
    }
    const bool copy = def.streaming && c.es == 1 && c.count >= 100000;
    if (copy) cs.push_back({"copy", [&] { copyProbe.run(c.threads); }, false, true});

    // Warm-up: every contender runs (twice when short, to warm caches and
    // thread pools); the last run sizes the samples.  The library's results are
    // checked against the plain loops' on the first objects.
    const Results where{def.id, c.n, c.es};
    const int checked = std::min(c.count, 4096);
    std::vector<double> ref, got;
    double round = 0;
    for (auto& x : cs) {
        // A long first run is its own warm-up (the blocks are already touched).
        double s = seconds(x.run);
        if (s < 0.01) s = seconds(x.run);
        if (std::string(x.name) == "plain") ref = c.elem == 4 ? snapshot<float>(job, where, checked) : snapshot<double>(job, where, checked);
        if (std::string(x.name) == "lib") got = c.elem == 4 ? snapshot<float>(job, where, checked) : snapshot<double>(job, where, checked);
        x.reps = x.isCopy ? 1 : std::max(1, int(std::ceil(opt.minSampleMs * 1e-3 / std::max(s, 1e-9))));
        round += s * x.reps;
    }
    const double bad = disagreement(ref, got, where.per_object(), c.elem);
    int rounds = int(opt.budgetMs * 1e-3 / std::max(round, 1e-9));
    rounds = std::clamp(rounds, opt.minRounds, opt.maxRounds) | 1;

    for (auto _ : state) {
        for (int r = 0; r < rounds; ++r)
            for (std::size_t i = 0; i < cs.size(); ++i) {
                auto& x = cs[(i + r) % cs.size()];
                x.t.push_back(seconds([&] {
                    for (int k = 0; k < x.reps; ++k) x.run();
                }));
            }
        state.SetIterationTime(median(cs[0].t));
    }

    const double bpo = bytes_per_object(def.id, c.n, c.elem);
    auto rate = [&](const Contender& x) { return double(x.reps) * c.count / median(x.t); };
    // Per round: how many times the library's speed the contender y is.
    auto paired = [&](const Contender& y) {
        std::vector<double> q;
        for (int r = 0; r < rounds; ++r) q.push_back((y.t[r] / y.reps) / (cs[0].t[r] / cs[0].reps));
        return median(q);
    };
    const Contender* best = nullptr;
    for (const auto& x : cs) {
        if (x.isPeer) {
            state.counters[x.name] = rate(x);
            if (!best || rate(x) > rate(*best)) best = &x;
        } else if (x.isCopy) {
            std::vector<double> q;
            for (int r = 0; r < rounds; ++r)
                q.push_back((bpo * c.count * cs[0].reps / cs[0].t[r]) / (copyProbe.bytes_moved() / x.t[r]));
            state.counters["copy_frac"] = median(q);
            state.counters["copy_B/s"] = copyProbe.bytes_moved() / median(x.t);
        } else if (std::string(x.name) == "lib_1t") {
            state.counters["x_1t"] = paired(x);
        }
    }
    // Speed-up of the plain loops from one thread to the case's thread count.
    const auto named = [&](const char* name) -> const Contender* {
        for (const auto& x : cs)
            if (std::string(x.name) == name) return &x;
        return nullptr;
    };
    if (const Contender *one = named("plain_1t"), *all = named("plain"); one && all) {
        std::vector<double> q;
        for (int r = 0; r < rounds; ++r) q.push_back((one->t[r] / one->reps) / (all->t[r] / all->reps));
        state.counters["plain_x_1t"] = median(q);
    }
    if (best) {
        state.counters["vs_best"] = paired(*best);
        state.SetLabel(std::string("best peer: ") + best->name);
    }
    state.counters["B/obj"] = bpo;
    state.counters["rounds"] = rounds;
    if (bad > 0.01) state.counters["mismatch"] = bad;
    if (libStatus != kelOk) state.SkipWithError(("library status " + std::to_string(libStatus)).c_str());
    state.SetItemsProcessed(std::int64_t(cs[0].reps) * c.count);
    state.SetBytesProcessed(std::int64_t(double(cs[0].reps) * c.count * bpo));
}

// The probe on its own: copy bandwidth at each thread count.
void run_copy(benchmark::State& state, int threads)
{
    copyProbe.run(threads);
    std::vector<double> t;
    for (auto _ : state) {
        for (int r = 0; r < 9; ++r) t.push_back(seconds([&] { copyProbe.run(threads); }));
        state.SetIterationTime(median(t));
    }
    state.SetBytesProcessed(std::int64_t(copyProbe.bytes_moved()));
}

bool wanted(const WorkloadDef& d)
{
    if (opt.workloads.empty()) return true;
    return std::find(opt.workloads.begin(), opt.workloads.end(), d.name) != opt.workloads.end();
}

}  // namespace
}  // namespace kb

int main(int argc, char** argv)
{
    using namespace kb;
    std::vector<char*> rest;
    for (int i = 0; i < argc; ++i)
        if (i == 0 || !take_option(argv[i])) rest.push_back(argv[i]);
    int restc = int(rest.size());
    benchmark::Initialize(&restc, rest.data());
    if (benchmark::ReportUnrecognizedArguments(restc, rest.data())) return 1;

    for (int threads : opt.threads) {
        const std::string name = "Copy/threads:" + std::to_string(threads);
        benchmark::RegisterBenchmark(name.c_str(), run_copy, threads)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
    }
    auto defs = registry();
    std::sort(defs.begin(), defs.end(), [](const auto& x, const auto& y) { return x.id < y.id; });
    // Element type outermost, so the data blocks are filled once per type.
    static std::vector<WorkloadDef> kept;
    kept = defs;
    for (int elem : opt.elems)
        for (const auto& def : kept) {
            if (!wanted(def)) continue;
            for (int n : opt.orders)
                for (int es : opt.strides)
                    for (int threads : opt.threads)
                        for (int count : opt.counts) {
                            if (def.accepts && !def.accepts(elem, n)) continue;
                            const Case c{&def, elem, n, es, count, threads};
                            const std::size_t mat = std::size_t(count) * n * n * es * elem;
                            const std::size_t vec = std::size_t(count) * n * es * elem;
                            data.maxMat[elem] = std::max(data.maxMat[elem], mat);
                            data.maxVec[elem] = std::max(data.maxVec[elem], vec);
                            data.maxIdx = std::max(data.maxIdx, std::size_t(count) * n * sizeof(int));
                            benchmark::RegisterBenchmark(case_name(c).c_str(), run_case, c)
                                ->UseManualTime()
                                ->Iterations(1)
                                ->Unit(benchmark::kMicrosecond);
                        }
        }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
