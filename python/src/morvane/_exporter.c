/* A base type for classes of Python that lend their memory out: whoever asks one for its bytes gets those of the object
 * that it was made with. Before Python 3.12 a class cannot say so itself. */
#include <Python.h>
#include <structmember.h>

typedef struct {
  PyObject_HEAD PyObject* array;
} exporter;

static PyObject* new_exporter(PyTypeObject* type, PyObject* arguments, PyObject* names) {
  (void)arguments;
  (void)names;
  allocfunc allocate = (allocfunc)PyType_GetSlot(type, Py_tp_alloc);
  return allocate(type, 0);
}

static int visit_array(PyObject* self, visitproc visit, void* arg) {
  Py_VISIT(Py_TYPE(self));
  Py_VISIT(((exporter*)self)->array);
  return 0;
}

static int clear_array(PyObject* self) {
  Py_CLEAR(((exporter*)self)->array);
  return 0;
}

static void free_exporter(PyObject* self) {
  PyTypeObject* type = Py_TYPE(self);
  PyObject_GC_UnTrack(self);
  clear_array(self);
  ((freefunc)PyType_GetSlot(type, Py_tp_free))(self);
  Py_DECREF(type);
}

static int lend(PyObject* self, Py_buffer* view, int flags) {
  PyObject* array = ((exporter*)self)->array;
  if (array == NULL) {
    PyErr_SetString(PyExc_BufferError, "there is no array whose memory could be lent");
    view->obj = NULL;
    return -1;
  }
  return PyObject_GetBuffer(array, view, flags);
}

static PyMemberDef members[] = {
    {"_lent", T_OBJECT, offsetof(exporter, array), 0, "The array whose memory is lent, or None"},
    {NULL, 0, 0, 0, NULL}};

static PyType_Slot slots[] = {{Py_tp_new, new_exporter},
                              {Py_tp_dealloc, free_exporter},
                              {Py_tp_traverse, visit_array},
                              {Py_tp_clear, clear_array},
                              {Py_tp_members, members},
                              {Py_bf_getbuffer, lend},
                              {0, NULL}};

static PyType_Spec specification = {.name = "morvane._exporter.Exporter",
                                    .basicsize = sizeof(exporter),
                                    .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_HAVE_GC,
                                    .slots = slots};

static struct PyModuleDef module_definition = {PyModuleDef_HEAD_INIT, .m_name = "morvane._exporter", .m_size = 0};

PyMODINIT_FUNC PyInit__exporter(void) {
  PyObject* module = PyModule_Create(&module_definition);
  PyObject* type = module == NULL ? NULL : PyType_FromSpec(&specification);
  if (type == NULL || PyModule_AddObjectRef(module, "Exporter", type) < 0) {
    Py_XDECREF(type);
    Py_XDECREF(module);
    return NULL;
  }
  Py_DECREF(type);
  return module;
}
